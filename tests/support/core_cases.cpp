// SPDX-License-Identifier: MIT
#include "support/core_cases.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>
#include <vector>

#include "support/core_exact.h"

namespace qmx::testing {
namespace {

using Fill = Matrix (*)(Dice&, int, int);

Matrix Filled(Dice& dice, int rows, int cols, double (*entry)(Dice&)) {
  Matrix A(rows, cols);
  for (int i = 1; i <= rows; ++i) {
    for (int j = 1; j <= cols; ++j) A(i, j) = entry(dice);
  }
  return A;
}

double Tie(Dice& dice) { return dice.Integer(-2, 2); }
double Digit(Dice& dice) { return dice.Integer(-9, 9); }
double SmallReal(Dice& dice) { return dice.Real(-1, 1); }
double Decimal(Dice& dice) { return dice.Integer(-9999, 9999) / 100.0; }
double AnyMagnitude(Dice& dice) { return dice.Real(-1, 1) * std::pow(10.0, dice.Integer(-12, 12)); }
double Wild(Dice& dice) { return dice.Real(-1, 1) * std::pow(10.0, dice.Integer(-300, 300)); }
double Huge(Dice& dice) { return dice.Real(-1, 1) * 1e300; }
double NearOverflow(Dice& dice) { return dice.Real(-1, 1) * 1.7e308; }
double Large(Dice& dice) { return dice.Real(-1, 1) * 1e150; }
double Tiny(Dice& dice) { return dice.Real(-1, 1) * 1e-300; }
double Subnormal(Dice& dice) { return dice.Integer(-99, 99) * 4.9406564584124654e-324; }
double SignedZeroOrOne(Dice& dice) {
  constexpr std::array<double, 4> kValues{0.0, -0.0, 1.0, -1.0};
  return kValues[dice.Integer(0, 3)];
}

template <double (*kEntry)(Dice&)>
Matrix Of(Dice& dice, int rows, int cols) {
  return Filled(dice, rows, cols, kEntry);
}

Matrix Hilbert(Dice&, int rows, int cols) { return HilbertMatrix(rows, cols); }

Matrix Sparse(Dice& dice, int rows, int cols) {
  Matrix A = Of<Digit>(dice, rows, cols);
  for (std::size_t k = 0; k < A.Size(); ++k) {
    if (dice.Chance(0.6)) A.Data()[k] = 0;
  }
  return A;
}

Matrix WithZeroLine(Dice& dice, int rows, int cols) {
  Matrix A = Of<Digit>(dice, rows, cols);
  if (A.Size() == 0) return A;
  const int row = dice.Integer(1, rows);
  const int col = dice.Integer(1, cols);
  const bool zeroColumn = dice.Chance(0.7);
  for (int k = 1; zeroColumn && k <= rows; ++k) A(k, col) = 0;
  for (int k = 1; !zeroColumn && k <= cols; ++k) A(row, k) = 0;
  return A;
}

/// Product of two narrow integer matrices: of low rank without any rounding.
Matrix Singular(Dice& dice, int rows, int cols) {
  const int rank = dice.Integer(0, std::max(0, std::min(rows, cols) - 1));
  const Matrix F = IntegerMatrix(dice, rows, rank, 4);
  const Matrix G = IntegerMatrix(dice, rank, cols, 4);
  Matrix A(rows, cols);
  for (int i = 1; i <= rows; ++i) {
    for (int j = 1; j <= cols; ++j) {
      for (int k = 1; k <= rank; ++k) A(i, j) += F(i, k) * G(k, j);
    }
  }
  return A;
}

Matrix RepeatedLines(Dice& dice, int rows, int cols) {
  Matrix A = Of<SmallReal>(dice, rows, cols);
  if (A.Size() == 0) return A;
  const int from = dice.Integer(1, cols);
  const int to = dice.Integer(1, cols);
  const double factor = dice.Integer(-2, 2);
  for (int k = 1; k <= rows; ++k) A(k, to) = factor * A(k, from);
  return A;
}

Matrix Permutation(Dice& dice, int rows, int cols) {
  std::vector<int> order(std::max(rows, cols));
  for (std::size_t k = 0; k < order.size(); ++k) order[k] = static_cast<int>(k) + 1;
  for (std::size_t k = order.size(); k > 1; --k) {
    std::swap(order[k - 1], order[dice.Integer(0, static_cast<int>(k) - 1)]);
  }
  const bool withSigns = dice.Chance(0.5);
  Matrix A(rows, cols);
  for (int i = 1; i <= rows; ++i) {
    if (order[i - 1] <= cols) A(i, order[i - 1]) = withSigns && dice.Chance(0.5) ? -1 : 1;
  }
  return A;
}

/// Keeps the entries with low <= j - i <= high.
Matrix Band(Dice& dice, int rows, int cols, int low, int high) {
  Matrix A = dice.Chance(0.5) ? Of<Digit>(dice, rows, cols) : Of<SmallReal>(dice, rows, cols);
  for (int i = 1; i <= rows; ++i) {
    for (int j = 1; j <= cols; ++j) {
      if (j - i < low || j - i > high) A(i, j) = 0;
    }
  }
  return A;
}

Matrix UpperTriangular(Dice& dice, int rows, int cols) { return Band(dice, rows, cols, 0, cols); }
Matrix LowerTriangular(Dice& dice, int rows, int cols) { return Band(dice, rows, cols, -rows, 0); }
Matrix Diagonal(Dice& dice, int rows, int cols) { return Band(dice, rows, cols, 0, 0); }
Matrix Hessenberg(Dice& dice, int rows, int cols) { return Band(dice, rows, cols, -1, cols); }
Matrix Tridiagonal(Dice& dice, int rows, int cols) { return Band(dice, rows, cols, -1, 1); }

Matrix DiagonallyDominant(Dice& dice, int rows, int cols) {
  Matrix A = Of<SmallReal>(dice, rows, cols);
  const double sign = dice.Chance(0.5) ? 1 : -1;
  for (int i = 1; A.Contains(i, i); ++i) A(i, i) = sign * (cols + dice.Real(0, 1));
  return A;
}

constexpr std::array<Fill, 25> kFills{
    Of<Tie>,          Of<SmallReal>,
    Of<Digit>,        Hilbert,
    Singular,         WithZeroLine,
    Permutation,      UpperTriangular,
    Of<Decimal>,      Sparse,
    LowerTriangular,  Of<Wild>,
    RepeatedLines,    Of<Huge>,
    Of<AnyMagnitude>, Diagonal,
    Hessenberg,       Of<Tie>,
    Of<Tiny>,         DiagonallyDominant,
    Tridiagonal,      Of<SignedZeroOrOne>,
    Of<Subnormal>,    Of<Large>,
    Of<NearOverflow>,
};

void MirrorUpperTriangle(Matrix& A) {
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = i + 1; j <= A.Cols(); ++j) A(j, i) = A(i, j);
  }
}

/// BᵀB with the sign of `sign`: definite, or semidefinite where B is short of rank.
Matrix Gram(const Matrix& B, double sign) {
  Matrix A(B.Cols(), B.Cols());
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) {
      for (int k = 1; k <= B.Rows(); ++k) A(i, j) += sign * B(k, i) * B(k, j);
    }
  }
  return A;
}

bool IsFinite(const Matrix& A) {
  return std::all_of(A.Data(), A.Data() + A.Size(), [](double a) { return std::isfinite(a); });
}

}  // namespace

std::uint64_t Dice::Next() {
  std::uint64_t z = (state_ += 0x9E3779B97F4A7C15u);
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
  return z ^ (z >> 31);
}

int Dice::Integer(int low, int high) {
  const auto count = static_cast<std::uint64_t>(high - low) + 1;
  return low + static_cast<int>(Next() % count);
}

double Dice::Real(double low, double high) {
  return low + (high - low) * (static_cast<double>(Next() >> 11) * 0x1p-53);
}

Matrix CaseSource::Next() {
  const int smallest = dice_.Chance(0.02) ? 0 : 1;
  int rows = dice_.Integer(smallest, largest_);
  int cols = rows;
  if (shape_ == CaseShape::kAny && dice_.Chance(0.7)) cols = dice_.Integer(smallest, largest_);
  if (shape_ == CaseShape::kTall) cols = dice_.Integer(std::min(smallest, rows), rows);
  return Next(rows, cols);
}

Matrix CaseSource::Next(int rows, int cols) {
  const int turn = dealt_++;
  const Fill fill = kFills[turn % kFills.size()];
  if (shape_ != CaseShape::kSymmetric) return fill(dice_, rows, cols);
  // Every other round is definite or semidefinite, the rest is whatever the kind gives.
  const int round = turn / static_cast<int>(kFills.size());
  Matrix A = fill(dice_, rows, cols);
  if (round % 2 == 1) {
    Matrix gram = Gram(A, dice_.Chance(0.5) ? 1 : -1);
    if (IsFinite(gram)) return gram;
  }
  MirrorUpperTriangle(A);
  return A;
}

Matrix IntegerMatrix(Dice& dice, int rows, int cols, int size) {
  Matrix A(rows, cols);
  for (std::size_t k = 0; k < A.Size(); ++k) A.Data()[k] = dice.Integer(-size, size);
  return A;
}

Matrix RealMatrix(Dice& dice, int rows, int cols) { return Of<SmallReal>(dice, rows, cols); }

Matrix HilbertMatrix(int rows, int cols) {
  Matrix A(rows, cols);
  for (int i = 1; i <= rows; ++i) {
    for (int j = 1; j <= cols; ++j) A(i, j) = 1.0 / (i + j - 1);
  }
  return A;
}

Matrix IdentityMatrix(int n) {
  Matrix A(n, n);
  for (int i = 1; i <= n; ++i) A(i, i) = 1;
  return A;
}

Matrix RosserMatrix() {
  return Rows({{611, 196, -192, 407, -8, -52, -49, 29},
               {196, 899, 113, -192, -71, -43, -8, -44},
               {-192, 113, 899, 196, 61, 49, 8, 52},
               {407, -192, 196, 611, 8, 44, 59, -23},
               {-8, -71, 61, 8, 411, -599, 208, 208},
               {-52, -43, 49, 44, -599, 411, 208, 208},
               {-49, -8, 8, 59, 208, 208, 99, -911},
               {29, -44, 52, -23, 208, 208, -911, 99}});
}

}  // namespace qmx::testing
