// SPDX-License-Identifier: MIT
#include "algorithms/cofactor_branches.h"

#include <algorithm>
#include <cmath>

namespace qmx {
namespace {

/// The place of the largest magnitude in the first column, the upper one of equals; -1 where all
/// are zero.
int UpperPivot(const View& block) {
  const LargestElement found = FindLargest(block.rows, [&block](int k) { return block(k, 0); });
  return found.magnitude == 0 ? -1 : found.place;
}

/// Takes the step with row p as the pivot row; what is left is the block without the row and the
/// first column.
void TakeStep(View& block, int p, WorkMeter& meter) {
  double* const pivot = block.first;
  if (p != 0) std::swap_ranges(pivot, pivot + block.cols, &block(p, 0));
  const int below = block.rows - 1;
  const int right = block.cols - 1;
  if (below > 0) {
    EliminateRows(pivot, pivot + block.rowStride, block.rowStride, below, 0, right);
    meter.Add(1.0 * below * right);
  }
  double* const rest = below > 0 && right > 0 ? &block(1, 1) : nullptr;
  block = {rest, below, right, block.rowStride, 1};
}

}  // namespace

double Cofactor(const Matrix& A, int i, int j, Matrix& minor, WorkMeter& meter,
                const EliminationSizes& sizes) {
  const int n = A.Rows();
  for (int k = 1; k < n; ++k) {
    const double* const from = A.Row(k < i ? k : k + 1);
    double* const to = minor.Row(k);
    for (int l = 1; l < n; ++l) to[l - 1] = from[l < j ? l - 1 : l];
  }
  return AlternatingSign(i + j) * ReduceToDeterminant(minor, meter, sizes);
}

/// All minors without the column of the step and without one of the rows that are left on the road.
void Branches::WithoutColumn(const Crossing& crossing, WorkMeter& meter) {
  const int j = crossing.column;
  branch_ = crossing.road;
  View block = NewBranch(n_ - j + 1, n_ - j);
  for (int k = 0; k < block.rows; ++k) {
    std::copy_n(crossing.Behind(branch_.rows[k]), block.cols, block.first + k * block.rowStride);
  }
  while (block.cols > 0) {
    const int p = OnlyPivot(block.rows, [&block](int k) { return block(k, 0); });
    if (p < 0) {
      TakeOneByOne(branch_.rows, j, j, meter);
      return;
    }
    FinishWithoutRow(branch_.rows[p], j, block, meter);
    branch_.TakePivot(p, block(p, 0));
    TakeStep(block, p, meter);
  }
  FinishWithoutRow(branch_.rows[0], j, block, meter);
}

/// All minors without the pivot row of the step and without one of the columns behind. The rows lie
/// in the order of these minors, so nothing can depend on a deleted one.
void Branches::WithoutRow(const Crossing& crossing, WorkMeter& meter) {
  const int i = crossing.PivotRow();
  int column = crossing.column;
  int exchanges = OrderWithout(i, crossing.road.pivots);
  double product = crossing.road.product;
  View block = NewBranch(n_ - column, n_ - column + 1);
  for (int k = 0; k < block.rows; ++k) {
    const int row = order_(column + k);
    block(k, 0) = crossing.numbers(row);
    std::copy_n(crossing.Behind(row), block.cols - 1, &block(k, 1));
  }
  while (block.rows > 0) {
    const int p = UpperPivot(block);
    if (p < 0) {
      TakeOneByOne({i}, column + 1, n_, meter);
      return;
    }
    if (p != 0) ++exchanges;
    product *= block(p, 0);
    TakeStep(block, p, meter);
    ++column;
    minor_.Reuse(block.rows, block.rows);
    for (int k = 0; k < block.rows; ++k) {
      std::copy_n(&block(k, 1), block.rows, minor_.Row(k + 1));
    }
    Finish(i, column, product, exchanges, meter);
  }
}

/// Leaves in order_ the rows without row i as the exchanges of their own elimination leave them
/// when it has used these pivots. Returns the number of exchanges.
int Branches::OrderWithout(int i, const std::vector<int>& pivots) {
  int places = 1;
  for (int row = 1; row <= n_; ++row) {
    placeOf_(row) = places;
    order_(places) = row;
    if (row != i) ++places;
  }
  int exchanges = 0;
  int step = 0;
  for (const int pivot : pivots) {
    const int place = placeOf_(pivot);
    if (place == ++step) continue;
    std::swap(order_(step), order_(place));
    placeOf_(order_(place)) = place;
    ++exchanges;
  }
  return exchanges;
}

View Branches::NewBranch(int rows, int cols) {
  branchRows_.Reuse(rows, cols);
  return Part(branchRows_, 1, 1, rows, cols);
}

/// The minor without row i and column j, of which the branch has all steps but the last ones.
void Branches::FinishWithoutRow(int i, int j, const View& block, WorkMeter& meter) {
  const int exchanges = OrderWithout(i, branch_.pivots);
  for (int k = 0; k < block.rows; ++k) placeOf_(branch_.rows[k]) = k;
  const int done = static_cast<int>(branch_.pivots.size());
  minor_.Reuse(block.cols, block.cols);
  for (int k = 1; k <= block.cols; ++k) {
    std::copy_n(&block(placeOf_(order_(done + k)), 0), block.cols, minor_.Row(k));
  }
  Finish(i, j, branch_.product, exchanges, meter);
}

/// The cofactor of row i and column j. Its minor has been eliminated up to minor_, with these
/// pivots and exchanges.
void Branches::Finish(int i, int j, double product, int exchanges, WorkMeter& meter) {
  const int m = minor_.Rows();
  const Elimination done =
      Eliminate(minor_, m - 1, PivotRule::kStopAtZeroColumn, meter, nullptr, sizes_);
  for (int k = 1; k <= m; ++k) product *= minor_(k, k);
  cofactors_(i, j) =
      AlternatingSign(i + j) * (AlternatingSign(exchanges + done.exchanges) * product);
}

void Branches::TakeOneByOne(const std::vector<int>& rows, int firstColumn, int lastColumn,
                            WorkMeter& meter) {
  minor_.Reuse(n_ - 1, n_ - 1);
  const double minors = 1.0 * static_cast<double>(rows.size()) * (lastColumn - firstColumn + 1);
  meter.Expect(minors * EliminationWork(n_ - 1, n_ - 1, n_ - 1));
  for (const int i : rows) {
    for (int j = firstColumn; j <= lastColumn; ++j)
      cofactors_(i, j) = Cofactor(A_, i, j, minor_, meter, sizes_);
  }
}

}  // namespace qmx
