#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Starts a program on a virtual display, takes a picture of the screen once a window is there, and ends it:
# scripts/picture.sh PICTURE PROGRAM [ARGUMENT...]
set -euo pipefail
. "$(dirname "$(realpath "$0")")/display.sh"
picture=$1
shift
export XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$(mktemp -d)}"
chmod 700 "$XDG_RUNTIME_DIR"

work=$(mktemp -d)
trap 'kill ${program:-} ${server:-} 2>/dev/null || true; rm -rf "$work"' EXIT
start_display "$work"

"$@" &
program=$!
for _ in $(seq 100); do
  kill -0 "$program" 2>/dev/null || { echo "The program ended before it showed a window." >&2; exit 1; }
  xwininfo -root -children 2>/dev/null | grep -q '"Orvane' && break
  sleep 0.1
done
sleep 1
import -window root "$picture"
echo "There is no display here. A picture of the window is in $picture."
