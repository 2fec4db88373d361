#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what is missing, builds everything and runs every test.
#   ./test.sh            all of it: the program as people get it and with sanitizers, the linter, the units for Windows,
#                        benchmarks and fuzzers for a few seconds, the package
#   ./test.sh --quick    only the optimised build with assertions and its tests
#   ./test.sh --windows  only the units for Windows, cross-compiled and run under wine
#   ./test.sh --package  only the Debian package: made, installed, used and removed, so it needs root
# The package is installed and removed by the whole run, too, where CI is set and root runs it; anywhere else it is only made
# and looked into.
set -euo pipefail
cd "$(dirname "$(realpath "$0")")"
. scripts/packages.sh

# Seconds of processor time that all commands have taken so far.
processor_seconds() {
  local fields
  read -ra fields <"/proc/$$/stat"
  echo $(((fields[15] + fields[16]) / $(getconf CLK_TCK)))
}

# Begins a stage: its name, so that a failure can be found in a long log, and what the one before it took.
stage_name=
stages=()
stage() {
  local now=$SECONDS processor
  processor=$(processor_seconds)
  [ -z "$stage_name" ] ||
    stages+=("$(printf '%5d s, %5d s of processor time: %s' $((now - stage_start)) $((processor - stage_processor)) "$stage_name")")
  stage_name=$1 stage_start=$now stage_processor=$processor
  printf '\n=== %s (%s)\n' "$1" "$(date +%T)"
}

build_preset() {
  stage "Build: $1"
  cmake --preset "$1"
  cmake --build --preset "$1"
}

# What the runs of tests have come to, to be repeated at the end.
summaries=()
test_preset() {
  stage "Test: $1"
  ctest --preset "$1" -j "$(nproc)" --output-log "build/tests-$1.log"
  summaries+=("$1: $(grep 'tests passed' "build/tests-$1.log")")
}

run_windows() {
  stage "Units for Windows"
  bash tests/windows/run.sh
}

case "${1:-}" in
  --windows)
    run_windows
    exit
    ;;
  --package)
    stage "Package"
    exec bash packaging/test.sh
    ;;
esac

stage "Packages"
install_packages $build_packages $run_packages $display_packages $test_packages $bench_packages $packaging_packages

# Qt wants a private folder for its sockets.
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
  XDG_RUNTIME_DIR=$(mktemp -d)
  chmod 700 "$XDG_RUNTIME_DIR"
  export XDG_RUNTIME_DIR
fi

stage "Format, floors and licence"
bash tests/checks/format.sh
bash tests/checks/floors.sh
bash tests/checks/licence.sh
if [ "${1:-}" = --quick ]; then
  build_preset dev
  test_preset dev
else
  build_preset check
  test_preset check
  stage "Benchmarks, small"
  bash tests/checks/bench.sh build/release
  build_preset asan
  test_preset asan
  build_preset fuzz
  stage "Fuzzers"
  bash tests/checks/fuzz.sh 5
  run_windows
  stage "Linter"
  bash tests/checks/lint.sh
  stage "Package"
  ./package.sh
  if [ -n "${CI:-}" ] && [ "$(id -u)" -eq 0 ]; then
    bash packaging/test.sh build/package/*.deb
  else
    bash packaging/test.sh --contents build/package/*.deb
  fi
fi
stage "All is well"
printf '%s\n' "${stages[@]}" "${summaries[@]}"
