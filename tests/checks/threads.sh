#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs the tests in which threads meet with the thread sanitizer: stops, the worker, steps and shared elements, the last
# session, both screens. By hand; it takes some minutes.
set -euo pipefail
cd "$(dirname "$(realpath "$0")")/../.."
cmake --preset tsan >/dev/null
cmake --build --preset tsan
suppressions=$PWD/tests/checks/threads.supp
export TSAN_OPTIONS="suppressions=$suppressions exitcode=66" QT_QPA_PLATFORM=offscreen

# Each test in a process of its own, as ctest runs them.
run() {
  local program=build/tsan/tests/$1 name suite=
  while IFS= read -r name; do
    if [[ $name != ' '* ]]; then
      suite=${name%% *}
    else
      name=$suite$(sed 's/^ *//; s/ .*//' <<<"$name")
      "$program" --gtest_brief=1 --gtest_filter="$name" >"$log" 2>&1 || { cat "$log"; echo "$name failed." >&2; exit 1; }
      echo "$name"
    fi
  done < <("$program" --gtest_list_tests --gtest_filter="$2" | grep -v '^Running main\|DISABLED')
}

log=$(mktemp)
trap 'rm -f "$log"' EXIT
run qmx_core_tests '*Stop*:*Team*:*History*:MatrixTest.*:SettingsTest.*'
run qmx_desktop_tests 'WorkTest.*:LastSession*:*BothScreens*:UndoKeys.*:DigitChecks*'
echo "The thread sanitizer has found nothing."
