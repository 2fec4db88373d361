#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what is missing, builds the benchmarks and prints the tables of docs/performance.md:
#   ./bench.sh                            the tasks and files, and what people wait for at the windows
#   ./bench.sh --small                    the tasks against the plain loops at every size from 1 to 30
#   ./bench.sh --sizes                    each size of blocks against its half and its double
#   ./bench.sh --cores [task]             wall times of one and of all cores; with --loaded beside as many busy processes,
#                                         --sweep and --steps at every tenth order up to 200 and 400, --around multiples of
#                                         512 beside their neighbours, --ceiling what two processes get of two cores
#   ./bench.sh --windows                  the windows alone, on a virtual display
#   ./bench.sh --benchmark_filter='^LU'   only those tasks; all options of Google Benchmark work
# The times of the tasks are processor times of one thread, those of --cores, of starts and of the files of other programs wall
# times; run it on an idle machine.
set -euo pipefail
cd "$(dirname "$(realpath "$0")")"
. scripts/packages.sh

install_packages $build_packages $run_packages $display_packages $bench_packages
cmake -S . -B build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DQMX_BENCH=ON -DQMX_TESTS=OFF -DQMX_DESKTOP=ON >/dev/null
if [ "${1:-}" = --cores ]; then
  cmake --build build/bench --target qmx_bench_cores
  exec build/bench/bench/qmx_bench_cores "${@:2}"
fi
if [ "${1:-}" != --windows ]; then
  cmake --build build/bench --target qmx_bench_tasks qmx_bench_exchange
  build/bench/bench/qmx_bench_tasks --benchmark_repetitions=3 "$@"
  [ $# != 0 ] || build/bench/bench/qmx_bench_exchange --benchmark_repetitions=3
fi
if [ $# = 0 ] || [ "$1" = --windows ]; then
  cmake --build build/bench --target qmx_bench_desktop
  XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$(mktemp -d)}" xvfb-run -a -s '-screen 0 1366x768x24' build/bench/bench/qmx_bench_desktop
fi
