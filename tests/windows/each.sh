#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs each test of a program of window tests in a process of its own under wine, since windows of one would be in the way of
# the next: each.sh PROGRAM NAMES, where NAMES are those to be left out, each with a colon behind it.
set -euo pipefail
export program=$1
wine=$(PATH=$PATH:/usr/lib/wine command -v wine64)
export wine
results=$(mktemp -d)
trap 'rm -rf "$results"' EXIT
export results

run_one() {
  local log=$results/${1//\//_}
  timeout 120 "$wine" "$program" --gtest_filter="$1" >"$log" 2>&1 </dev/null && rm "$log" || sed 's/\r$//' "$log"
}
export -f run_one

"$wine" "$program" --gtest_list_tests --gtest_filter="-$2" 2>/dev/null </dev/null | tr -d '\r' |
  awk '/^[^ ]/ { suite = $1 } /^  / { print suite $1 }' | grep -v DISABLED_ >"$results/.names"
[ -s "$results/.names" ] || { echo "$program has no tests." >&2 && exit 1; }
xargs -P "$(nproc)" -n 1 bash -c 'run_one "$1"' run_one <"$results/.names"
failed=$(find "$results" -type f ! -name '.names' -printf '%f\n')
echo "$(wc -l <"$results/.names") tests, failed: ${failed:-none}"
[ -z "$failed" ]
