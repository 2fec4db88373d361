#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds all test programs for Windows, of the program as people get it, and runs them under wine. What there is none of stands
# with its reason in tests/windows/absent.tsv.
#   tests/windows/all.sh [FOLDER]   the build's folder, build/windows-tests unless it is named
# The libraries must have been built (see scripts/windows/libraries.sh).
set -euo pipefail
cd "$(dirname "$(realpath "$0")")/../.."
. scripts/packages.sh
install_packages $build_packages $windows_packages fonts-dejavu-core fonts-liberation libgtest-dev googletest
. scripts/windows/places.sh

# Every name that is left out must be that of a test.
while IFS=$'\t' read -r name reason; do
  case $name in
    '' | '#'*) ;;
    *.cpp) [ -f "tests/$name" ] || { echo "absent.tsv: there is no tests/$name" >&2 && exit 1; } ;;
    *) grep -rqE "^TEST(_F|_P)?\(${name%%.*}, ${name#*.}\)" tests || { echo "absent.tsv: there is no test $name" >&2 && exit 1; } ;;
  esac
  [ "$name" = "${name#\#}" ] || continue
  [ -n "$reason" ] || { echo "absent.tsv: no reason for $name" >&2 && exit 1; }
done <tests/windows/absent.tsv

build=$(realpath -m "${1:-build/windows-tests}")
cmake -G Ninja -S . -B "$build" --toolchain cmake/mingw.cmake -DQMX_WINDOWS_LIBRARIES="$windows_libraries" $windows_qt_host \
  -DCMAKE_BUILD_TYPE=Release -DQMX_TESTS=ON
cmake --build "$build" --target qmx_all_tests
. tests/windows/wine.sh "$build"
# The platform that the window tests run on finds no fonts of its own there.
mkdir -p "$build/fonts"
cp /usr/share/fonts/truetype/dejavu/DejaVuSans{,-Bold,Mono,Mono-Bold}.ttf \
  /usr/share/fonts/truetype/liberation/LiberationMono*.ttf "$build/fonts"
export QMX_TEST_FONTS="Z:$build/fonts"
ctest --test-dir "$build" --output-on-failure --output-log "$build/tests.log"
