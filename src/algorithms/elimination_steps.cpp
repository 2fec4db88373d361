#include "algorithms/elimination_steps.h"

#include <cassert>
#include <cstddef>

namespace qmx {
namespace {

/// Whole cache lines for `count` numbers.
std::size_t Lines(int count, std::size_t inLine) {
  return (static_cast<std::size_t>(count) + inLine - 1) / inLine;
}

}  // namespace

Panel::Panel(int rows) : lines_(kPanelColumns * Lines(rows, std::size(Line().numbers))) {}

View Panel::Empty(int columns, int rows) {
  const std::size_t lines = Lines(rows, std::size(Line().numbers));
  assert(columns * lines <= lines_.size());
  return {lines_.data()->numbers, columns, rows,
          static_cast<std::ptrdiff_t>(lines * std::size(Line().numbers)), 1};
}

View Panel::Read(ConstView from) {
  const View panel = Empty(from.cols, from.rows);
  CurrentKernels().transpose(
      {from.first, from.rowStride, from.rows, from.cols, panel.first, panel.rowStride});
  return panel;
}

void Panel::Write(ConstView panel, View to) {
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

void MoveNegated(double* x, int count, double* kept) {
  for (int k = 0; k < count; ++k) {
    const double number = x[k];
    kept[k] = number;
    x[k] = -number;
  }
}

void EliminatePivotRows(ConstView F, View X) {
  assert(X.rows <= kPanelColumns && F.rows == X.rows && F.cols == X.rows && X.colStride == 1);
  CurrentKernels().eliminatePivotRows({.factors = F.first,
                                       .factorRow = F.rowStride,
                                       .factorCol = F.colStride,
                                       .rows = X.first,
                                       .stride = X.rowStride,
                                       .count = X.rows,
                                       .cols = X.cols});
}

void ExchangePivotRows(ConstView F, const double* pivots, View X, View U) {
  assert(X.rows <= kPanelColumns && F.rows == X.rows && F.cols == X.rows && X.colStride == 1 &&
         U.colStride == 1);
  CurrentKernels().exchangePivotRows({.factors = F.first,
                                      .factorRow = F.rowStride,
                                      .factorCol = F.colStride,
                                      .rows = X.first,
                                      .stride = X.rowStride,
                                      .count = X.rows,
                                      .cols = X.cols,
                                      .pivots = pivots,
                                      .kept = U.first,
                                      .keptStride = U.rowStride});
}

}  // namespace qmx
