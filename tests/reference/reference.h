// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <vector>

#include "reference/table.h"

// The algorithms as plain loops, one statement after the other as in a textbook and with nothing
// reordered, cached or shared. They share no code with the program and are the oracle that it has
// to agree with to the last bit.

namespace qmx::reference {

Table Sum(const Table& A, const Table& B);
Table Difference(const Table& A, const Table& B);
Table Product(const Table& A, const Table& B);
double Trace(const Table& A);
Table Transpose(const Table& A);
Table Scaled(Table A, double c);
Table Shifted(Table A, double s);
bool IsSymmetric(const Table& A);

double Determinant(const Table& A);

struct Inverted {
  bool invertible = false;
  Table result;
};
Inverted Inverse(const Table& A);
Inverted AdjointByInverse(const Table& A);
Table AdjointByCofactors(const Table& A);

struct Lu {
  bool factored = false;
  Table L;
  Table U;
  Table exchanges;
  int exchangeCount = 0;
};
Lu FactorLu(const Table& A, bool pivoting);

struct Qr {
  bool factored = false;
  Table Q;
  Table R;
};
Qr FactorQr(const Table& A);

struct Definite {
  const char* verdict = nullptr;
  double overallSmallestPivot = 0;
  Table smallestPivot;
  Table leadingMinor;
};
Definite TestDefiniteness(const Table& A);

struct Created {
  bool complete = false;
  Table table;
};
Created Identity(int rows, int cols);
Created Random(int rows, int cols, double low, double high, bool symmetric, bool integers,
               const std::function<float()>& draw);

struct Solved {
  bool solved = false;
  bool inconsistent = false;
  Table x;
};
Solved SolveOneShot(const Table& system);
/// `exchanges` without rows stands for the identity.
Solved SolveByFactors(const Table& L, const Table& U, const Table& exchanges, const Table& system);
Solved SolveLeastSquares(const Table& system);

struct Eigen {
  int count = 0;
  Table values;
  Table origin;
};
struct EigenLimits {
  double tolerance = 0;
  int maxCycles = 0;
  double shiftReference = 0;
  double additionalShift = 0;
};
Eigen FindEigenvalues(const Table& A, const EigenLimits& limits, int& shiftIndex);

/// Status 0 converged, 1 not converged, -1 singular; x is N x 1.
int FindEigenvector(const Table& A, double lambda, int origin, const EigenLimits& limits, Table& x);

}  // namespace qmx::reference
