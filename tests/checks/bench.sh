#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs every benchmark with its smallest matrices, which tells nothing of speed but that the benchmarks still run:
# bench.sh BUILD
set -euo pipefail
script=$(realpath "$0")
cd "$(dirname "$script")/../.."
programs=$1/bench
small='/(-|2|10|30)(/|$)'

"$programs/qmx_bench_tasks" --benchmark_filter="$small"
"$programs/qmx_bench_cores" --short
"$programs/qmx_bench_proof" --benchmark_filter="$small" --benchmark_min_time=0.001
"$programs/qmx_bench_derivation" --benchmark_filter=n:3/ --benchmark_min_time=0.001
# All of these read and write large files; the two kinds without decimal digits take no time.
"$programs/qmx_bench_exchange" --benchmark_filter='MAT|NumPy' --benchmark_min_time=0.001
xvfb-run -a -s '-screen 0 1366x768x24' "$programs/qmx_bench_gaps" --short
xvfb-run -a -s '-screen 0 1366x768x24' "$programs/qmx_bench_desktop" --benchmark_filter="$small"
for program in "$programs"/qmx_bench_*; do
  grep -q "$(basename "$program")" "$script" || { echo "$program has not been run." >&2; exit 1; }
done
echo "The benchmarks run."
