# SPDX-License-Identifier: MIT
# Debian packages that the program needs, by purpose, and how to get them. To be sourced.

build_packages="g++ cmake ninja-build ccache pkg-config qt6-base-dev libgl-dev fp-utils libchm-dev
  librsvg2-bin libmatio-dev zlib1g-dev libflint-dev libflint-arb-dev"
run_packages="fonts-liberation fonts-dejavu-core shared-mime-info desktop-file-utils xdg-utils"
display_packages="xvfb xauth x11-utils imagemagick"
test_packages="libgtest-dev clang-format clang-tidy clang poppler-utils cups cups-client dbus dbus-x11 at-spi2-core
  xdotool libbenchmark-dev libglib2.0-bin libatspi2.0-dev locales"
bench_packages="libbenchmark-dev libxcb1-dev libopenblas-dev liblapacke-dev libeigen3-dev"
packaging_packages="dpkg-dev file gzip lintian desktop-file-utils appstream xdg-utils xdotool libglib2.0-bin man-db mandoc"
windows_packages="g++-mingw-w64-x86-64-posix gcc-mingw-w64-x86-64-posix libz-mingw-w64-dev wine64 nsis zip dpkg-dev cmake ninja-build
  ccache qt6-base-dev qt6-base-dev-tools m4 fp-utils librsvg2-bin"

# Runs a command as root, with sudo where we are not.
as_root() {
  if [ "$(id -u)" -eq 0 ]; then "$@"; else sudo "$@"; fi
}

# Installs those of the named packages that are missing; needs no network where nothing is.
install_packages() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q '^install ok installed' || missing+=("$package")
  done
  [ "${#missing[@]}" -eq 0 ] && return 0
  echo "Installing: ${missing[*]}"
  as_root apt-get -o DPkg::Lock::Timeout=300 update -q
  as_root env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 install -y -q --no-install-recommends "${missing[@]}"
}
