// SPDX-License-Identifier: MIT
#include "algorithms/lu.h"

#include <algorithm>

#include "algorithms/elimination.h"
#include "algorithms/shared_work.h"
#include "base/number_text.h"

namespace qmx {
namespace {

/// Moves the multipliers from below the diagonal of U into a unit lower triangular L.
Matrix SplitOffMultipliers(Matrix& U, WorkMeter& whole) {
  Matrix L = Matrix::Unset(U.Rows(), U.Rows());
  ShareRows(whole, U.Rows(), U.Cols(), [&U, &L](int r, WorkMeter& meter) {
    double* const row = L.Row(r);
    const int multipliers = std::min(r - 1, U.Cols());
    std::copy_n(U.Row(r), multipliers, row);
    std::fill_n(U.Row(r), multipliers, 0.0);
    std::fill(row + multipliers, row + L.Cols(), 0.0);
    row[r - 1] = 1.0;
    meter.Add(kMovedNumber * L.Cols());
  });
  return L;
}

}  // namespace

LuFactors FactorLu(const Matrix& A, bool pivoting, Progress& progress, const BlockSizes& sizes) {
  if (std::min(A.Rows(), A.Cols()) >= sizes.elimination.shareFrom) SharedTeam().Wake();
  LuFactors factors{false, Matrix(), A, Matrix::Unset(A.Rows(), 1), 0};
  const PivotRule rule = pivoting ? PivotRule::kSkipZeroColumns : PivotRule::kDiagonalElement;
  const int columns = std::min(A.Rows(), A.Cols());
  WorkMeter meter(
      progress, EliminationWork(A.Rows(), A.Cols(), columns) + kMovedNumber * A.Rows() * A.Rows());
  const Elimination done =
      Eliminate(factors.U, columns, rule, meter, factors.exchanges.Data(), sizes.elimination);
  factors.exchangeCount = done.exchanges;
  factors.factored = done.complete;
  if (factors.factored) factors.L = SplitOffMultipliers(factors.U, meter);
  meter.End();
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
