#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Tries the packages for Windows out under wine, on a display of its own: installs without a question, opens a project by its
# association, types numbers, computes an inverse, saves, prints into a file and (as root) on a default printer, compares the files
# with what the program for Debian makes of the same keys, and removes everything. Leaves pictures of the windows in build/windows-pictures.
#   packaging/windows/test.sh
set -euo pipefail
cd "$(dirname "$(realpath "$0")")/../.."
. scripts/packages.sh
. scripts/display.sh
install_packages $windows_packages $display_packages xdotool openbox fonts-liberation fonts-dejavu-core unzip poppler-utils cups \
  cups-client ghostscript

fail() {
  echo "FAILED: $*" >&2
  [ -z "${DISPLAY:-}" ] || import -window root "$pictures/failed.png" || true
  exit 1
}

work=$(mktemp -d)
pictures=$PWD/build/windows-pictures
rm -rf "$pictures"
mkdir -p "$pictures"
server=
manager=
prints=
clean_up() {
  "$wine" wineboot -k 2>/dev/null || true
  for process in $prints $manager $server; do kill "$process" 2>/dev/null || true; done
  # What still ends there may be writing its last files.
  rm -rf "$work" 2>/dev/null || { sleep 3 && rm -rf "$work"; } || true
}
trap clean_up EXIT

wine=$(command -v wine64 || echo /usr/lib/wine/wine64)
export WINEPREFIX=$work/prefix WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES=winemenubuilder.exe= HOME=$work/home
export XDG_RUNTIME_DIR=$work/run CUPS_SERVER=/nowhere
unset WAYLAND_DISPLAY
mkdir -p "$HOME"
mkdir -m 700 "$XDG_RUNTIME_DIR"
setup=$(realpath build/package/orvane-*-setup.exe)
archive=$(realpath build/package/orvane-*-windows.zip)

echo "--- contents of the archive"
unzip -q "$archive" -d "$work/unpacked"
for file in qmx.exe qmx.chm pi_data.ico LICENCE.txt licences/{qt6-base,flint,flint-arb,gmp,mpfr4,chmlib,zlib,LGPL-3,overview}.txt; do
  [ -s "$work/unpacked/Orvane/$file" ] || fail "no $file in the archive"
done
size=$(stat -c %s "$work/unpacked/Orvane/qmx.exe")
[ "$size" -le 25000000 ] || fail "the program has $size bytes"

start_display "$work"
openbox >/dev/null 2>&1 &
manager=$!

echo "--- installation without a question"
"$wine" wineboot -i >/dev/null 2>&1
# Wine has no fonts of its own that stand for those of Windows.
for font in "MS Shell Dlg" "MS Shell Dlg 2" "Segoe UI" "Tahoma"; do
  "$wine" reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$font" /d "DejaVu Sans" /f >/dev/null
done
"$wine" reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "Courier New" /d "Liberation Mono" /f >/dev/null
"$wine" "$setup" /S
user=$(echo "$WINEPREFIX"/drive_c/users/*/AppData | sed 's/.*Public.* //')
installed=$user/Local/Programs/Orvane
for file in qmx.exe qmx.chm pi_data.ico remove.exe licences/LGPL-3.txt; do
  [ -s "$installed/$file" ] || fail "no $file in $installed"
done
menu="$user/Roaming/Microsoft/Windows/Start Menu/Programs/Orvane"
[ -s "$menu/Orvane.lnk" ] && [ -s "$menu/Orvane help.lnk" ] || fail "nothing in the start menu"
cmp "$installed/qmx.exe" "$work/unpacked/Orvane/qmx.exe"
"$wine" reg query 'HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Orvane' /v DisplayName | grep -q Orvane ||
  fail "it cannot be removed by the system's list"

find_window() { xdotool search --onlyvisible --name "$1" 2>/dev/null | tail -n 1; }
# await NAME: the number of the window of that name, once it is seen.
await() {
  local window
  for _ in $(seq 300); do
    window=$(find_window "$1")
    [ -n "$window" ] && echo "$window" && return
    sleep 0.1
  done
  fail "no window $1"
}
# focus NAME: gives the keyboard to the window of that name, and lets it settle.
focus() {
  local window
  window=$(await "^$1\$")
  for _ in $(seq 50); do
    xdotool windowactivate "$window" 2>/dev/null || true
    sleep 0.2
    [ "$(xdotool getactivewindow getwindowname 2>/dev/null)" = "$1" ] && sleep 1 && return
  done
  fail "$1 does not get the keyboard"
}
press() {
  for key in "$@"; do
    xdotool key "$key"
    sleep 0.3
  done
}
photograph() { import -window root "$pictures/$1.png"; }

# Numbers are typed into A of a project, its inverse is computed, and all is saved. The keys are the same for every system.
# walk NAME: photographs what it comes to under that name.
walk() {
  local name=$1
  focus Orvane
  press ctrl+1
  focus 'Matrix A'
  press ctrl+Home 7 period 2 5 Down 3
  press ctrl+shift+i
  focus Orvane
  photograph "$name"
  press ctrl+s
  for _ in $(seq 50); do cmp -s "$project" "$work/before.qmx" || break; sleep 0.1; done
  sleep 0.5
}

# Waits until a file is there and whole.
await_file() {
  for _ in $(seq 100); do [ -s "$1" ] && sleep 0.5 && return; sleep 0.1; done
  fail "no $1"
}
# print_to NAME FILE: without a printer the whole report goes into a file that is asked for, FILE as that system names it.
print_to() {
  focus Orvane
  press ctrl+p
  for _ in $(seq 50); do [ "$(xdotool getactivewindow getwindowname 2>/dev/null)" != Orvane ] && break; sleep 0.1; done
  sleep 1
  xdotool type "$2"
  photograph "$1"
  press Return
}

# By its name, as a person would who has a folder of such files; the letters are of two scripts.
project="$work/Übung Матрица 1.qmx"
cp tests/data/a.qmx "$work/before.qmx"

echo "--- a project opened by its association, worked on and saved"
cp "$work/before.qmx" "$project"
LC_ALL=C.UTF-8 "$wine" start /unix "$project" >/dev/null 2>&1 &
walk windows
grep -q $'^ 7.25 \r$' "$project" || fail "the number that was typed is not in the file"
windows_bytes=$work/windows.qmx
cp "$project" "$windows_bytes"
print_to windows-print "Z:${work//\//\\}\\windows.pdf"
await_file "$work/windows.pdf"
focus Orvane
press ctrl+q
for _ in $(seq 100); do [ -z "$(find_window '^Orvane$')" ] && break; sleep 0.1; done
[ -z "$(find_window '^Orvane$')" ] || fail "the program does not end"
[ -s "$user/Roaming/Orvane/Orvane.ini" ] || fail "no settings in the application data"

echo "--- the same keys in the program for Debian"
cmake --preset release >/dev/null
cmake --build --preset release --target qmx >/dev/null
cp "$work/before.qmx" "$project"
LC_ALL=C.UTF-8 build/release/bin/qmx.exe "$project" >/dev/null 2>&1 &
program=$!
walk debian
cmp "$project" "$windows_bytes" || fail "the two programs have written different files"
print_to debian-print "$work/debian.pdf"
await_file "$work/debian.pdf"
for name in windows debian; do
  pdftotext -raw "$work/$name.pdf" "$work/$name.txt"
  pdftoppm -r 75 -png -singlefile "$work/$name.pdf" "$pictures/$name-paper"
done
grep -qx 'A( 1 , 1 )= 7.25' "$work/windows.txt" || fail "the number that was typed is not on paper"
cmp "$work/windows.txt" "$work/debian.txt" || fail "the two programs have printed different lines"
focus Orvane
press ctrl+q
wait "$program" || true

echo "--- the file of the one opened in the other"
cp "$windows_bytes" "$project"
LC_ALL=C.UTF-8 build/release/bin/qmx.exe "$project" >/dev/null 2>&1 &
program=$!
focus Orvane
touch -d @0 "$project"
press ctrl+s
for _ in $(seq 50); do [ "$(stat -c %Y "$project")" -ne 0 ] && break; sleep 0.1; done
[ "$(stat -c %Y "$project")" -ne 0 ] || fail "it was not saved again"
sleep 0.5
cmp "$project" "$windows_bytes" || fail "the program for Debian has read another project than was written"
press ctrl+q
wait "$program" || true

if [ "$(id -u)" -eq 0 ]; then
  echo "--- printed on the default printer"
  mkdir "$work/prints"
  chmod 755 "$work" "$work/prints"
  bash tests/desktop/print_server.sh "$work/prints" >/dev/null 2>&1 &
  prints=$!
  bash tests/desktop/print_server.sh --printer "$work/prints"
  "$wine" wineboot -k
  CUPS_SERVER=$work/prints/run/sock LC_ALL=C.UTF-8 "$wine" start /unix "$project" >/dev/null 2>&1 &
  focus Orvane
  press ctrl+p
  await_file "$work/prints/out/title"
  grep -qx Orvane "$work/prints/out/title" || fail "the job has no title"
  ps2pdf "$work/prints/out/job" "$work/job.pdf"
  pdftoppm -r 75 -png -singlefile "$work/job.pdf" "$pictures/windows-printer"
  pdftotext -raw "$work/job.pdf" - | grep -qx 'A( 1 , 1 )= 7.25' || fail "the number that was typed does not come out of the printer"
  press ctrl+q
fi

echo "--- removal"
"$wine" "$installed/remove.exe" /S
for _ in $(seq 200); do [ -e "$installed/qmx.exe" ] || break; sleep 0.1; done
sleep 1
left=$(find "$user" -ipath '*orvane*')
[ -z "$left" ] || fail "left behind: $left"
for key in '.qmx' 'Orvane.Project' 'Orvane'; do
  for root in 'HKCU\Software\Classes' HKCR; do
    if "$wine" reg query "$root\\$key" >/dev/null 2>&1; then fail "$root\\$key is left in the registry"; fi
  done
done
if "$wine" reg query 'HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Orvane' >/dev/null 2>&1; then
  fail "it is still in the system's list"
fi
[ -s "$project" ] || fail "the project is gone"
echo "Installed, used and removed; the pictures are in $pictures."
