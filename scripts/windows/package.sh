#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes the packages for Windows: build/package/orvane-VERSION-windows.zip, which is unpacked and started, and
# build/package/orvane-VERSION-setup.exe, which installs for one user. Tries both out and runs all tests under wine.
#   scripts/windows/package.sh            all of it
#   scripts/windows/package.sh --untested only makes them
set -euo pipefail
cd "$(dirname "$(realpath "$0")")/../.."
. scripts/packages.sh

install_packages $build_packages $windows_packages
. scripts/windows/places.sh
bash scripts/windows/libraries.sh

build=build/windows-program
cmake -G Ninja -S . -B "$build" --toolchain cmake/mingw.cmake -DQMX_WINDOWS_LIBRARIES="$windows_libraries" $windows_qt_host \
  -DCMAKE_BUILD_TYPE=Release -DQMX_TESTS=OFF >/dev/null
cmake --build "$build"
version=$(sed -n 's/^project(Orvane VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)

# The licences of all that is inside: what the source packages say of themselves and the general ones they name.
collect_licences() {
  local name
  mkdir -p "$1"
  for name in qt6-base flint flint-arb gmp mpfr4 chmlib; do
    sed 's/$/\r/' "$windows_cache/sources/$name/debian/copyright" >"$1/$name.txt"
  done
  sed 's/$/\r/' /usr/share/doc/mingw-w64-common/copyright >"$1/mingw-w64.txt"
  sed 's/$/\r/' /usr/share/doc/gcc-mingw-w64-base/copyright >"$1/gcc.txt"
  sed 's/$/\r/' /usr/share/doc/libz-mingw-w64-dev/copyright >"$1/zlib.txt"
  for name in LGPL-2.1 LGPL-3 GPL-2 GPL-3; do
    sed 's/$/\r/' "/usr/share/common-licenses/$name" >"$1/$name.txt"
  done
  sed 's/$/\r/' resources/libraries.txt LICENSE >"$1/overview.txt"
}

stage=$PWD/build/windows-stage
rm -rf "$stage" build/package/orvane-*-{windows.zip,setup.exe}
cmake --install "$build" --prefix "$stage/Orvane" >/dev/null
sed 's/$/\r/' LICENSE >"$stage/Orvane/LICENCE.txt"
collect_licences "$stage/Orvane/licences"

# The same sources give the same archive.
mkdir -p build/package
moment=$(git log -1 --format=%ct 2>/dev/null || stat -c %Y CMakeLists.txt)
find "$stage" -exec touch -d "@$moment" {} +
archive=$PWD/build/package/orvane-$version-windows.zip
(cd "$stage" && find Orvane -type f | LC_ALL=C sort | TZ=UTC zip -X -q -9 "$archive" -@)
makensis -V2 -DVERSION="$version" -DFOLDER="$stage/Orvane" -DOUTPUT="$PWD/build/package/orvane-$version-setup.exe" \
  packaging/windows/setup.nsi
ls -l build/package/orvane-"$version"-{windows.zip,setup.exe} "$stage/Orvane/qmx.exe"

if [ "${1:-}" != --untested ]; then
  bash packaging/windows/test.sh
  bash tests/windows/all.sh "$build"
fi
