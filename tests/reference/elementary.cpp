// SPDX-License-Identifier: MIT
#include "reference/reference.h"

namespace qmx::reference {

Table Sum(const Table& A, const Table& B) {
  Table C(A.Rows(), A.Cols());
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) C(i, j) = A(i, j) + B(i, j);
  }
  return C;
}

Table Difference(const Table& A, const Table& B) {
  Table C(A.Rows(), A.Cols());
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) C(i, j) = A(i, j) - B(i, j);
  }
  return C;
}

Table Product(const Table& A, const Table& B) {
  Table C(A.Rows(), B.Cols());
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= B.Cols(); ++j) {
      for (int k = 1; k <= A.Cols(); ++k) C(i, j) = A(i, k) * B(k, j) + C(i, j);
    }
  }
  return C;
}

double Trace(const Table& A) {
  double t = 0.0;
  for (int k = 1; k <= A.Rows(); ++k) t = t + A(k, k);
  return t;
}

Table Transpose(const Table& A) {
  Table T(A.Cols(), A.Rows());
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) T(j, i) = A(i, j);
  }
  return T;
}

Table Scaled(Table A, double c) {
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) A(i, j) = c * A(i, j);
  }
  return A;
}

Table Shifted(Table A, double s) {
  int i = 1;
  while (i <= A.Rows() && i <= A.Cols()) {
    A(i, i) = A(i, i) + s;
    ++i;
  }
  return A;
}

bool IsSymmetric(const Table& A) {
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = i + 1; j <= A.Rows(); ++j) {
      if (A(i, j) != A(j, i)) return false;
    }
  }
  return true;
}

Created Identity(int rows, int cols) {
  Created created{false, Table(rows, cols)};
  try {
    for (int i = 1; i <= rows; ++i) created.table(i, i) = 1.0;
    created.complete = true;
  } catch (const SubscriptFault&) {
    created.complete = false;
  }
  return created;
}

}  // namespace qmx::reference
