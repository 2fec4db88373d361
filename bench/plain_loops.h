#pragma once

#include "base/matrix.h"

// The tasks as a textbook writes them down, without checks and without any thought for the machine:
// what the program's own algorithms are measured against. Results are only as complete as the
// measurement needs them.

namespace qmx::bench {

Matrix PlainProduct(const Matrix& A, const Matrix& B);
double PlainDeterminant(Matrix W);
/// L, after U was cleared below its diagonal.
Matrix PlainLu(const Matrix& A);
Matrix PlainInverse(Matrix W);
Matrix PlainAdjoint(const Matrix& A);
/// Q; R goes the way of all work matrices.
Matrix PlainQr(const Matrix& A);
/// The leading minors.
Matrix PlainDefiniteness(Matrix W);
Matrix PlainSolution(Matrix M);
/// The work matrix after this many cycles of R·Q, reduced to Hessenberg form before.
Matrix PlainHessenberg(Matrix M);
Matrix PlainCycles(Matrix M, int cycles);

}  // namespace qmx::bench
