// SPDX-License-Identifier: MIT
#include "algorithms/elimination_steps.h"

#include <cassert>
#include <cstddef>

namespace qmx {
namespace {

/// The job of the pivot rows X with the factors F, but for what exchange steps need.
PivotRowsJob JobOf(const ConstView& F, const View& X) {
  assert(X.rows <= kPanelColumns && F.rows == X.rows && F.cols == X.rows && X.colStride == 1);
  return {.factors = F.first,
          .factorRow = F.rowStride,
          .factorCol = F.colStride,
          .rows = X.first,
          .stride = X.rowStride,
          .count = X.rows,
          .cols = X.cols};
}

}  // namespace

ColumnPanel::ColumnPanel(int rows)
    : numbers_(static_cast<std::size_t>(kPanelColumns) * WholeLines(rows)) {}

View ColumnPanel::Empty(int columns, int rows) {
  const int stride = WholeLines(rows);
  assert(static_cast<std::size_t>(columns) * stride <= numbers_.size());
  return {numbers_.data(), columns, rows, stride, 1};
}

View ColumnPanel::Read(ConstView from) {
  const View panel = Empty(from.cols, from.rows);
  CurrentKernels().transpose(
      {from.first, from.rowStride, from.rows, from.cols, panel.first, panel.rowStride});
  return panel;
}

void ColumnPanel::Write(ConstView panel, View to) {
  CurrentKernels().transpose(
      {panel.first, panel.rowStride, panel.rows, panel.cols, to.first, to.rowStride});
}

int PlaceOfLargest(const double* x, int count) {
  return PlaceOfLargest(LargestMagnitude(x, count), x, count);
}

int PlaceOfLargest(double largest, const double* x, int count) {
  const int place = CurrentKernels().placeOf(largest, x, count);
  // Only a NaN in the first place is equal to nothing.
  return place == count ? 0 : place;
}

void ExchangeRows(Matrix& W, std::span<const RowExchange> exchanges, int from, int to) {
  if (from > to) return;
  for (const auto& [upper, lower] : exchanges) {
    SwapNumbers(W.Row(upper) + (from - 1), W.Row(lower) + (from - 1), to - from + 1);
  }
}

void MoveNegated(double* x, int count, double* kept) {
  for (int k = 0; k < count; ++k) {
    const double number = x[k];
    kept[k] = number;
    x[k] = -number;
  }
}

void EliminatePivotRows(ConstView F, View X) { CurrentKernels().eliminatePivotRows(JobOf(F, X)); }

void ExchangePivotRows(ConstView F, const double* pivots, View X, View U) {
  assert(U.colStride == 1);
  PivotRowsJob job = JobOf(F, X);
  job.pivots = pivots;
  job.kept = U.first;
  job.keptStride = U.rowStride;
  CurrentKernels().exchangePivotRows(job);
}

}  // namespace qmx
