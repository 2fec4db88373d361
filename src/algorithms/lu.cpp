#include "algorithms/lu.h"

#include <algorithm>

#include "algorithms/elimination.h"
#include "base/number_text.h"

namespace qmx {
namespace {

/// Moves the multipliers from below the diagonal of U into a unit lower triangular L.
Matrix SplitOffMultipliers(Matrix& U) {
  Matrix L = Matrix::Unset(U.Rows(), U.Rows());
  for (int r = 1; r <= U.Rows(); ++r) {
    double* const row = L.Row(r);
    const int multipliers = std::min(r - 1, U.Cols());
    std::copy_n(U.Row(r), multipliers, row);
    std::fill_n(U.Row(r), multipliers, 0.0);
    std::fill(row + multipliers, row + L.Cols(), 0.0);
    row[r - 1] = 1.0;
  }
  return L;
}

}  // namespace

LuFactors FactorLu(const Matrix& A, bool pivoting, Progress& progress, const BlockSizes& sizes) {
  LuFactors factors{false, Matrix(), A, Matrix::Unset(A.Rows(), 1), 0};
  const PivotRule rule = pivoting ? PivotRule::kSkipZeroColumns : PivotRule::kDiagonalElement;
  const int columns = std::min(A.Rows(), A.Cols());
  const Elimination done =
      Eliminate(factors.U, columns, rule, progress, factors.exchanges.Data(), sizes.elimination);
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
