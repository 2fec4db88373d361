// SPDX-License-Identifier: MIT
#include "algorithms/lu.h"

#include <algorithm>

#include "algorithms/elimination.h"
#include "algorithms/shared_work.h"
#include "algorithms/work_matrix.h"
#include "base/number_text.h"

namespace qmx {
namespace {

/// Takes U from the leading columns of an eliminated work matrix, and the multipliers below its
/// diagonal into a unit lower triangular L where there is one.
void TakeFactors(Matrix& W, int cols, LuFactors& factors, WorkMeter& whole) {
  const bool isWide = W.Cols() != cols;
  if (isWide) {
    factors.U = Matrix::Unset(W.Rows(), cols);
  } else {
    factors.U.Swap(W);
    if (!factors.factored) return;
  }
  Matrix& U = factors.U;
  Matrix& L = factors.L;
  if (factors.factored) L = Matrix::Unset(U.Rows(), U.Rows());
  ShareRows(whole, U.Rows(), cols, [&](int r, WorkMeter& meter) {
    const double* const from = isWide ? W.Row(r) : U.Row(r);
    const int multipliers = factors.factored ? std::min(r - 1, cols) : 0;
    if (factors.factored) {
      double* const row = L.Row(r);
      std::copy_n(from, multipliers, row);
      std::fill(row + multipliers, row + L.Cols(), 0.0);
      row[r - 1] = 1.0;
    }
    std::fill_n(U.Row(r), multipliers, 0.0);
    if (isWide) std::copy(from + multipliers, from + cols, U.Row(r) + multipliers);
    meter.Add(kMovedNumber * U.Rows());
  });
}

}  // namespace

LuFactors FactorLu(const Matrix& A, bool pivoting, Progress& progress, const BlockSizes& sizes) {
  const int columns = std::min(A.Rows(), A.Cols());
  const double work = EliminationWork(A.Rows(), A.Cols(), columns);
  if (columns >= sizes.elimination.shareFrom) SharedTeam().Wake(kEliminationName, work);
  LuFactors factors{false, Matrix(), Matrix(), Matrix::Unset(A.Rows(), 1), 0};
  Matrix W = WorkCopy(A, sizes.work);
  const PivotRule rule = pivoting ? PivotRule::kSkipZeroColumns : PivotRule::kDiagonalElement;
  WorkMeter meter(progress, work + kMovedNumber * A.Rows() * A.Rows());
  const Elimination done = Eliminate(W, columns, rule, meter, factors.exchanges.Data(),
                                     sizes.elimination, W.Cols() - A.Cols());
  factors.exchangeCount = done.exchanges;
  factors.factored = done.complete;
  TakeFactors(W, A.Cols(), factors, meter);
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
