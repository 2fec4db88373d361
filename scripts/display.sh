# SPDX-License-Identifier: MIT
# A display that nobody sees. To be sourced.

# start_display FOLDER: starts a display of 1366 x 768, which everything after it uses. Its process is $server, to be ended by the
# caller; FOLDER gets the file that it tells its number in.
start_display() {
  Xvfb -displayfd 3 -screen 0 1366x768x24 -nolisten tcp 3>"$1/display" 2>/dev/null &
  server=$!
  for _ in $(seq 100); do [ -s "$1/display" ] && break; sleep 0.1; done
  DISPLAY=":$(cat "$1/display")"
  export DISPLAY
}
