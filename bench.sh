#!/usr/bin/env bash
# Installs what is missing, builds the benchmarks and prints the table of docs/performance.md:
#   ./bench.sh                            every task at every size
#   ./bench.sh --benchmark_filter='^LU'   only those; all options of Google Benchmark work
# The times are processor times of one thread; run it on an idle machine.
set -euo pipefail
cd "$(dirname "$(realpath "$0")")"
. scripts/packages.sh

install_packages $build_packages $bench_packages
cmake -S . -B build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DQMX_BENCH=ON -DQMX_TESTS=OFF \
  -DQMX_DESKTOP=OFF >/dev/null
cmake --build build/bench --target qmx_bench_tasks
build/bench/bench/qmx_bench_tasks --benchmark_repetitions=3 "$@"
