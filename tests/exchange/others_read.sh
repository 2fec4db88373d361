#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Lets other programs read the files in examples/ and compare them, bit for bit, with the Hilbert matrix; by hand, with
# those that are installed (Debian: python3-numpy, python3-scipy, octave, r-base-core).
set -uo pipefail
cd "$(dirname "$(realpath "$0")")/../../examples"
if /usr/bin/python3 -c 'import scipy' 2>/dev/null; then
  /usr/bin/python3 - <<'END'
import numpy, scipy.io
H = 1 / (numpy.arange(4)[:, None] + numpy.arange(4) + 1.0)
same = lambda M: (numpy.ascontiguousarray(M).view("u8") == H.view("u8")).all()
print("loadtxt", same(numpy.loadtxt("hilbert.csv", delimiter=",")))
print("load", same(numpy.load("hilbert.npy")))
print("mmread", same(scipy.io.mmread("hilbert.mtx")))
print("loadmat", same(scipy.io.loadmat("hilbert.mat")["H"]))
END
fi
if command -v octave-cli >/dev/null; then
  octave-cli --eval 'ref = 1 ./ ((0:3)'"'"' + (1:4)); same = @(M) isequal(typecast(M(:), "uint64"), typecast(ref(:), "uint64"));
    printf("dlmread %d\n", same(dlmread("hilbert.csv", ",")));
    load("hilbert.mat"); printf("load of MAT %d\n", same(H)); clear H;
    load("hilbert-octave.txt"); printf("load of text %d\n", same(H));' 2>/dev/null
fi
if command -v Rscript >/dev/null; then
  Rscript -e 'H <- 1 / outer(1:4, 1:4, function(i, j) i + j - 1)
    same <- function(file, read) cat(file, identical(unname(as.matrix(read(file, header = FALSE))), H), "\n")
    same("hilbert.csv", read.csv); same("hilbert-comma.csv", read.csv2)'
fi
