#include "algorithms/lu.h"

#include <algorithm>
#include <utility>

#include "algorithms/elimination.h"
#include "base/number_text.h"

namespace qmx {
namespace {

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
  LuFactors factors{false, Matrix(), A, Matrix::Unset(A.Rows(), 1), 0};
  const PivotRule rule = pivoting ? PivotRule::kSkipZeroColumns : PivotRule::kDiagonalElement;
  const int columns = std::min(A.Rows(), A.Cols());
  const Elimination done = Eliminate(factors.U, columns, rule, progress, factors.exchanges.Data());
  factors.exchangeCount = done.exchanges;
  factors.factored = done.complete;
  if (factors.factored) factors.L = SplitOffMultipliers(factors.U);
  return factors;
}

Matrix PermutationOf(const Matrix& exchanges) {
  Matrix permutation(exchanges.Rows(), exchanges.Rows());
  for (int k = 1; k <= exchanges.Rows(); ++k) {
    permutation(k, RoundToInteger(exchanges(k, 1))) = 1.0;
  }
  return permutation;
}

}  // namespace qmx
