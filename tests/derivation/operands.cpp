// SPDX-License-Identifier: MIT
#include "derivation/operands.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace qmx::testing {
namespace {

/// An element of one kind of matrix.
double Element(Dice& dice, int kind) {
  switch (kind) {
    case 0:
      return dice.Integer(-9, 9);
    case 1:
      return dice.Integer(-2, 2);
    case 2:
      return dice.Integer(-99, 99) / 10.0;
    case 3:
      return dice.Integer(-999, 999) / 100.0;
    case 4: {
      static constexpr double kOdd[] = {1e300, 1e-300, -0.0, 0.1, 1, 1e15, 123456789012345, -0.3};
      return kOdd[dice.Integer(0, 7)];
    }
    default:
      return dice.Real(-1, 1);
  }
}

}  // namespace

Matrix MatrixOf(std::initializer_list<std::initializer_list<double>> rows) {
  Matrix A(static_cast<int>(rows.size()),
           rows.size() == 0 ? 0 : static_cast<int>(rows.begin()->size()));
  double* to = A.Data();
  for (const auto& row : rows) to = std::copy(row.begin(), row.end(), to);
  return A;
}

Matrix OperandSource::Any(int rows, int cols) {
  Matrix A(rows, cols);
  const int kind = dice_.Integer(0, 5);
  for (std::size_t k = 0; k < A.Size(); ++k) A.Data()[k] = Element(dice_, kind);
  if (rows > 1 && dice_.Chance(0.2)) {
    // One row a multiple of another.
    const int from = dice_.Integer(1, rows);
    const int to = dice_.Integer(1, rows);
    const int factor = dice_.Integer(-2, 2);
    for (int j = 1; j <= cols; ++j) A(to, j) = factor * A(from, j);
  }
  if (cols > 0 && rows > 0 && dice_.Chance(0.1)) {
    const int zero = dice_.Integer(1, cols);
    for (int i = 1; i <= rows; ++i) A(i, zero) = 0;
  }
  if (cols > 0 && rows > 0 && dice_.Chance(0.3)) A(1, 1) = 0;
  return A;
}

Matrix OperandSource::Square() {
  const int n = Order();
  return Any(n, n);
}

Matrix OperandSource::Symmetric() {
  Matrix A = Square();
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j < i; ++j) A(i, j) = A(j, i);
  }
  return A;
}

Rational DeterminantOf(RationalMatrix A) {
  Rational determinant(1.0);
  for (int i = 1; i <= A.Rows(); ++i) {
    int p = i;
    while (p <= A.Rows() && A(p, i).IsZero()) ++p;
    if (p > A.Rows()) return Rational(0.0);
    if (p != i) determinant = Rational(0.0) - determinant;
    for (int j = 1; j <= A.Cols(); ++j) std::swap(A(i, j), A(p, j));
    determinant *= A(i, i);
    for (int k = i + 1; k <= A.Rows(); ++k) {
      const Rational factor = A(k, i) / A(i, i);
      for (int j = i; j <= A.Cols(); ++j) A(k, j) -= factor * A(i, j);
    }
  }
  return determinant;
}

RationalMatrix SolutionOf(RationalMatrix A, RationalMatrix B) {
  const int n = A.Rows();
  for (int i = 1; i <= n; ++i) {
    int p = i;
    while (A(p, i).IsZero()) ++p;
    for (int j = 1; j <= n; ++j) std::swap(A(i, j), A(p, j));
    for (int j = 1; j <= B.Cols(); ++j) std::swap(B(i, j), B(p, j));
    for (int k = 1; k <= n; ++k) {
      if (k == i) continue;
      const Rational factor = A(k, i) / A(i, i);
      for (int j = 1; j <= n; ++j) A(k, j) -= factor * A(i, j);
      for (int j = 1; j <= B.Cols(); ++j) B(k, j) -= factor * B(i, j);
    }
  }
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= B.Cols(); ++j) B(i, j) /= A(i, i);
  }
  return B;
}

RationalMatrix UnitMatrix(int n) {
  RationalMatrix unit(n, n);
  for (int i = 1; i <= n; ++i) unit(i, i) = Rational(1.0);
  return unit;
}

RationalMatrix ProductOf(const RationalMatrix& A, const RationalMatrix& B) {
  RationalMatrix product(A.Rows(), B.Cols());
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= B.Cols(); ++j) {
      for (int k = 1; k <= A.Cols(); ++k) product(i, j) += A(i, k) * B(k, j);
    }
  }
  return product;
}

RationalMatrix TransposeOf(const RationalMatrix& A) {
  RationalMatrix transposed(A.Cols(), A.Rows());
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) transposed(j, i) = A(i, j);
  }
  return transposed;
}

}  // namespace qmx::testing
