#!/bin/sh
# SPDX-License-Identifier: MIT
# Runs a program on a display and a session bus of its own: on_display.sh PROGRAM [ARGUMENT...]
set -eu
XDG_RUNTIME_DIR=$(mktemp -d)
chmod 700 "$XDG_RUNTIME_DIR"
export XDG_RUNTIME_DIR
unset DBUS_SESSION_BUS_ADDRESS WAYLAND_DISPLAY
status=0
dbus-run-session -- xvfb-run -a -s "-screen 0 1366x768x24" "$@" || status=$?
rm -rf "$XDG_RUNTIME_DIR"
exit "$status"
