#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Draws the pictures of the README anew: scripts/readme_pictures.sh PROGRAM. Works a session by keys on a virtual display.
# Needs xvfb, openbox, xdotool and ImageMagick.
set -euo pipefail
. "$(dirname "$(realpath "$0")")/display.sh"
program=$(realpath "$1")
images=$(dirname "$(realpath "$0")")/../docs/images
work=$(mktemp -d)
export XDG_RUNTIME_DIR="$work" XDG_CONFIG_HOME="$work/config" XDG_STATE_HOME="$work/state"
chmod 700 "$work"
trap 'kill ${running:-} ${manager:-} ${server:-} 2>/dev/null || true; rm -rf "$work"' EXIT
start_display "$work"
openbox >/dev/null 2>&1 &
manager=$!

# Waits until a window has the keyboard, and lets it paint.
active() {
  for _ in $(seq 100); do
    [ "$(xdotool getactivewindow getwindowname 2>/dev/null)" = "$1" ] && break
    sleep 0.1
  done
  sleep 3
}
press() { for key in "$@"; do xdotool key "$key"; sleep 0.3; done; }

# A project with A alone: flags, its size, its elements.
{
  printf '#TRUE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\r\n#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\r\n'
  printf '#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\r\n3,3\r\n'
  printf ' %s \r\n' 4 1 0 1 3 1 0 1 2
} >"$work/example.qmx"
"$program" "$work/example.qmx" &
running=$!
active Orvane
press ctrl+1
active 'Matrix A'
press ctrl+m
active Orvane
press ctrl+shift+d ctrl+shift+t ctrl+shift+f ctrl+shift+i
# The digits of the results are checked meanwhile.
sleep 4
import -window root "$work/main.png"
for _ in $(seq 9); do
  [ "$(xdotool getactivewindow getwindowname)" = 'Inverse of A' ] && break
  press F6
done
[ "$(xdotool getactivewindow getwindowname)" = 'Inverse of A' ] || { echo 'Keys were lost: run it again.' >&2; exit 1; }
inverse=$(xdotool getactivewindow)
press alt+w
sleep 2
import -window "$inverse" "$work/inverse.png"
for picture in main inverse; do
  convert "$work/$picture.png" -strip +dither -colors 128 "$work/$picture-small.png"
done
mv "$work/main-small.png" "$images/main-window.png"
mv "$work/inverse-small.png" "$images/inverse.png"
