#!/usr/bin/env bash
# Installs what is missing, builds everything and runs every test.
#   ./test.sh            all of it
#   ./test.sh --quick    without the sanitizer run and the linter
#   ./test.sh --windows  only the units for Windows, cross-compiled and run under wine
#   ./test.sh --package  only the Debian package: made, installed, used and removed, so it needs root
set -euo pipefail
cd "$(dirname "$(realpath "$0")")"
. scripts/packages.sh

# A stage's name, so that a failure can be found in a long log.
stage() { printf '\n=== %s (%s)\n' "$1" "$(date +%T)"; }

run_windows() {
  stage "Units for Windows"
  bash tests/windows/run.sh
}

run_preset() {
  stage "Build and test: $1"
  cmake --preset "$1"
  cmake --build --preset "$1"
  ctest --preset "$1" -j "$(nproc)"
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
install_packages $build_packages $run_packages $display_packages $test_packages

# Qt wants a private folder for its sockets.
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
  XDG_RUNTIME_DIR=$(mktemp -d)
  chmod 700 "$XDG_RUNTIME_DIR"
  export XDG_RUNTIME_DIR
fi

stage "Format and floors"
bash tests/checks/format.sh
bash tests/checks/floors.sh
run_preset dev
if [ "${1:-}" != --quick ]; then
  run_preset asan
  stage "Linter"
  bash tests/checks/lint.sh build/dev
  [ ! -e tests/windows/run.sh ] || run_windows
fi
stage "All is well"
