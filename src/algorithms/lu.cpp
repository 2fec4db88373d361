#include "algorithms/lu.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "algorithms/elimination.h"

namespace qmx {
namespace {

bool IsZeroBelowDiagonal(const Matrix& U, int col) {
  for (int k = col + 1; k <= U.Rows(); ++k) {
    if (U(k, col) != 0) return false;
  }
  return true;
}

/// Moves the multipliers from below the diagonal of U into a unit lower triangular L.
Matrix SplitOffMultipliers(Matrix& U) {
  Matrix L(U.Rows(), U.Rows());
  for (int r = 1; r <= U.Rows(); ++r) {
    L(r, r) = 1.0;
    const int multipliers = std::min(r - 1, U.Cols());
    for (int c = 1; c <= multipliers; ++c) L(r, c) = std::exchange(U(r, c), 0.0);
  }
  return L;
}

}  // namespace

LuFactors FactorLu(const Matrix& A, bool pivoting, Progress& progress) {
  LuFactors factors;
  Matrix& U = factors.U = A;
  factors.exchanges = Matrix(A.Rows(), 1);
  for (int k = 1; k <= A.Rows(); ++k) factors.exchanges(k, 1) = k;

  const int last = std::min(A.Rows(), A.Cols());
  for (int i = 1; i <= last; ++i) {
    const Pivot pivot = pivoting ? FindPivot(U, i) : Pivot{i, std::abs(U(i, i))};
    if (pivot.magnitude == 0) {
      if (!pivoting && !IsZeroBelowDiagonal(U, i)) return factors;
      continue;
    }
    if (pivot.row != i) {
      U.SwapRows(i, pivot.row);
      factors.exchanges.SwapRows(i, pivot.row);
      ++factors.exchangeCount;
    }
    EliminateBelow(U, i);
    progress.Report(EliminatedPart(i, last));
  }
  factors.L = SplitOffMultipliers(U);
  factors.factored = true;
  return factors;
}

}  // namespace qmx
