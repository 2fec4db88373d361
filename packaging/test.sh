#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes the package, has it checked, installs it, opens a project from the desktop, and removes it again. Changes the
# packages of the system, so it runs as root on a machine that may be changed:
#   packaging/test.sh [package.deb]
#   packaging/test.sh --contents [package.deb]   only has it checked and looks into it, which changes nothing and anybody may do
set -euo pipefail
contents_only=
if [ "${1:-}" = --contents ]; then
  contents_only=yes
  shift
fi
package="${1:+$(realpath -- "$1")}"
cd "$(dirname "$(realpath "$0")")/.."
. scripts/packages.sh
. scripts/display.sh
install_packages $display_packages $packaging_packages
if [ -z "$package" ]; then
  ./package.sh
  package=$(realpath build/package/*.deb)
fi

fail() {
  echo "FAILED: $*" >&2
  exit 1
}

work=$(mktemp -d)
server=
program=
clean_up() {
  for process in $program $server; do kill "$process" 2>/dev/null || true; done
  rm -rf "$work"
}
trap clean_up EXIT

# Checks what is installed below a prefix: the link leads to the program, which has its files beside it.
check_prefix() {
  local folder file
  folder=$(dirname "$(realpath "$1/bin/qmx")")
  [ "$folder" = "$1/libexec/orvane" ] || fail "bin/qmx leads to $folder"
  [ -x "$folder/qmx.exe" ] || fail "no program"
  for file in "$folder"/{qmx.chm,pi_data.ico,pi_data.svg,pi_data_48.png} "$1"/share/man/man1/qmx.1.gz \
    "$1"/share/{applications/orvane.desktop,mime/packages/orvane.xml,metainfo/org.orvane.Orvane.metainfo.xml} \
    "$1"/share/icons/hicolor/{48x48,scalable}/apps/orvane.*; do
    [ -s "$file" ] || fail "no $file"
  done
}

if [ -e build/release/bin/qmx.exe ]; then
  echo "--- installation into a folder of one's own"
  cmake --install build/release --prefix "$work/prefix" >"$work/install.log"
  check_prefix "$work/prefix"
fi

echo "--- contents of the package"
dpkg-deb -x "$package" "$work/contents"
check_prefix "$work/contents/usr"
[ -z "$(find "$work/contents" -mindepth 1 -maxdepth 1 ! -name usr)" ] || fail "something outside of /usr"

echo "--- checks of the package"
desktop-file-validate packaging/orvane.desktop
appstreamcli validate --no-net packaging/org.orvane.Orvane.metainfo.xml
mandoc -T lint -W warning packaging/qmx.1
# Exits with a failure for errors and warnings.
lintian --fail-on error,warning --allow-root "$package"
if [ -n "$contents_only" ]; then
  echo "The package holds what it should."
  exit
fi

echo "--- installation"
if dpkg-query -W orvane >/dev/null 2>&1; then fail "the package is installed already"; fi
DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 install -y -q --no-install-recommends "$package" >"$work/apt.log"
man --path qmx >/dev/null || fail "no manual page"
for file in qmx.exe qmx.chm pi_data.ico; do
  [ -s "$(dirname "$(realpath /usr/bin/qmx)")/$file" ] || fail "no $file beside the program"
done

echo "--- a project opened from the desktop"
export HOME=$work/home XDG_RUNTIME_DIR=$work/run
unset XDG_DATA_HOME XDG_CONFIG_HOME XDG_DATA_DIRS LC_ALL LC_NUMERIC WAYLAND_DISPLAY
mkdir -p "$HOME"
mkdir -m 700 "$XDG_RUNTIME_DIR"
start_display "$work"

# The process that runs the installed program, if there is one.
find_program() {
  local process
  for process in /proc/[0-9]*; do
    [ "$(readlink "$process/exe" 2>/dev/null)" = /usr/libexec/orvane/qmx.exe ] && basename "$process" && return
  done
  return 1
}

# A project with one matrix, written as another program might: the program writes it back in its own form.
falses() { printf '#FALSE#%.0s' $(seq "$1") | sed 's/#F/,#F/g'; }
project="$work/my first project.qmx"
open_and_save() {
  printf '#TRUE#%s\n%s\n%s\n2,2\n1\n  2.5\n-3\n4\n' "$(falses 5)" "$(falses 6 | cut -c2-)" "$(falses 8 | cut -c2-)" \
    >"$project"
  "$@" "$project" >"$work/opener.log" 2>&1 &
  for _ in $(seq 100); do program=$(find_program) && break; sleep 0.1; done
  [ -n "$program" ] || fail "$1 did not start the program: $(cat "$work/opener.log")"
  tr '\0' '|' <"/proc/$program/cmdline" | grep -qF "|$project|" || fail "$1 did not pass the path alone"
  window=$(timeout 20 xdotool search --sync --onlyvisible --pid "$program" --name Orvane | head -n 1)
  xprop -id "$window" WM_CLASS | grep -qF ", \"$(sed -n 's/^StartupWMClass=//p' packaging/orvane.desktop)\"" ||
    fail "the window is not that of the desktop entry"
  xdotool windowfocus --sync "$window" key --window "$window" ctrl+s
  for _ in $(seq 50); do grep -q $'^ 2.5 \r$' "$project" && break; sleep 0.1; done
  printf '2,2\r\n 1 \r\n 2.5 \r\n-3 \r\n 4 \r\n' | cmp - <(tail -n +4 "$project") || fail "the project was not opened"
  kill "$program"
  for _ in $(seq 50); do kill -0 "$program" 2>/dev/null || break; sleep 0.1; done
  program=
}
# Outside of any desktop xdg-open goes by what a file holds, and a project is plain text.
XDG_CURRENT_DESKTOP=GNOME open_and_save xdg-open
open_and_save gio open
open_and_save qmx

echo "--- removal"
DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=300 purge -y -q orvane >"$work/apt.log"
left=$(find /usr/bin/qmx /usr/libexec/orvane /usr/share -path '*orvane*' -o -path '*x-qmx*' 2>/dev/null || true)
[ -z "$left" ] || fail "left behind: $left"
echo "The package is all right."
