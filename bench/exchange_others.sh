#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# How long other programs take for the text table that qmx_bench_exchange reads: bench/exchange_others.sh [build/bench]
# Measures those that are installed (Debian: python3-numpy, octave, r-base-core), best of three, processor time.
set -euo pipefail
build=${1:-build/bench}
table=$(mktemp --suffix=.csv)
trap 'rm -f "$table"' EXIT
"$build/bench/qmx_bench_exchange" "$table"
if /usr/bin/python3 -c 'import numpy' 2>/dev/null; then
  /usr/bin/python3 - "$table" <<'END'
import sys, time
import numpy
best = 1e9
for _ in range(3):
    start = time.process_time()
    numpy.loadtxt(sys.argv[1], delimiter=",")
    best = min(best, time.process_time() - start)
print(f"numpy.loadtxt {numpy.__version__}: {best:.2f} s")
END
fi
if command -v octave-cli >/dev/null; then
  octave-cli --eval "best = Inf; for k = 1:3, start = cputime; dlmread('$table', ','); best = min(best, cputime - start);
    end, printf('dlmread, Octave %s: %.2f s\n', version, best)" 2>/dev/null
fi
if command -v Rscript >/dev/null; then
  Rscript -e "best <- min(sapply(1:3, function(k) system.time(scan('$table', sep = ',', quiet = TRUE))[['user.self']]))
    cat('scan,', R.version.string, ':', best, 's\n')"
fi
