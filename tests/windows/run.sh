#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Cross-compiles the units for Windows and runs their tests under wine, without a display. All other tests: all.sh.
set -euo pipefail
cd "$(dirname "$(realpath "$0")")/../.."
. scripts/packages.sh
install_packages $build_packages g++-mingw-w64-x86-64-posix libz-mingw-w64-dev wine64 libgtest-dev googletest

build=$PWD/build/windows
cmake -G Ninja -S . -B "$build" --toolchain cmake/mingw.cmake -DQMX_DESKTOP=OFF -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build "$build" --target qmx_windows_tests
. tests/windows/wine.sh "$build"
ctest --test-dir "$build" -R '^qmx_windows_tests$' --output-on-failure
