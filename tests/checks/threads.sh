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

# The tests of a program that a filter names, but for what one thread does alone: it races with nobody, and takes minutes. The
# killed program is left out, too: the sanitizer of g++ 12 does not see how std::condition_variable waits until a time, and
# takes the mutex for held while it sleeps.
list() {
  build/tsan/tests/"$1" --gtest_list_tests --gtest_filter="$2" |
    grep -v '^Running main\|DISABLED\|/OneThread \|AKilledProgramLosesAtMostTwoSeconds' || true
}

# Each test in a process of its own, as ctest runs them. A part of the filter that names none is a failure: what it once
# named would go unwatched.
run() {
  local program=build/tsan/tests/$1 name suite= part parts
  IFS=: read -ra parts <<<"$2"
  for part in "${parts[@]}"; do
    [ -n "$(list "$1" "$part")" ] || { echo "$1 has no test of the name $part." >&2; exit 1; }
  done
  while IFS= read -r name; do
    if [[ $name != ' '* ]]; then
      suite=${name%% *}
    else
      name=$suite$(sed 's/^ *//; s/ .*//' <<<"$name")
      "$program" --gtest_brief=1 --gtest_filter="$name" >"$log" 2>&1 || { cat "$log"; echo "$name failed." >&2; exit 1; }
      echo "$name"
    fi
  done < <(list "$1" "$2")
}

log=$(mktemp)
trap 'rm -f "$log"' EXIT
run qmx_core_tests '*Stop*:*Team*:*Attempt*:*Lanes*:BlockSizesTest.*:*SharedProduct*:*AnyNumberOfThreads*:*History*:MatrixTest.*:SettingsTest.*'
run qmx_desktop_tests 'WorkTest.*:LastSession*:*BothScreens*:UndoKeys.*:DigitChecks*'
echo "The thread sanitizer has found nothing."
