# SPDX-License-Identifier: MIT
# A Windows of their own for tests, without a display, below the folder of a build. To be sourced; takes that folder.
export WINEPREFIX="$1/wine" WINEARCH=win64 WINEDEBUG=-all
unset DISPLAY WAYLAND_DISPLAY
wine=$(PATH=$PATH:/usr/lib/wine command -v wine64)
# What it starts in the background would keep a pipe open.
[ -d "$WINEPREFIX/dosdevices/z:" ] || "$wine" cmd /c exit >"$1/wine.log" 2>&1 </dev/null
# A share of a network, for the tests of such paths.
mkdir -p "$WINEPREFIX/dosdevices/unc/qmx-tests/share"
