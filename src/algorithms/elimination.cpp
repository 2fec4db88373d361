// SPDX-License-Identifier: MIT
#include "algorithms/elimination.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "algorithms/elimination_steps.h"
#include "algorithms/ordered_product.h"
#include "algorithms/pivot_search.h"
#include "base/arithmetic.h"
#include "base/fault.h"
#include "base/vector.h"

// Columns are eliminated block by block, and a block in panels of a few columns. Nothing takes the
// steps of a panel before it needs them; then it takes all steps that it has not yet taken at once:
//
//          first..  panel  ..last   right     1. The panel, from its first row down, takes the
//         +-------+-------+-------+-------+      steps before it: - L1·U1. Then it is eliminated
//         |   \   |  U1   |  U2   |       |      in all its rows.
//         |     \ |       |       |  U12  |   2. The rows of the panel behind it take the steps
//         +-------+-------+-------+       |      before it, - L2·U2, and then those of the panel
//         |  L2   | \     | rows  |       |      in these rows themselves.
//         |       |   \   |       |       |   3. After the last panel the same is done in the
//         +-------+-------+-------+-------+      rows of the block to the right, and A22 := A22 -
//         |  L1   | panel |       |  A22  |      L21·U12, which is where the time goes.
//         +-------+-------+-------+-------+
//
// A panel is copied out with its columns as rows, so that what belongs together lies together.
// Every element takes its steps one by one in the order of the columns, as in the textbook loop.

namespace qmx {
namespace {

/// What the pivot rule says to a column without a pivot; element(k) is k rows below the diagonal.
template <class Element>
bool EndsAtZero(PivotRule rule, int below, Element element) {
  if (rule != PivotRule::kDiagonalElement) return rule == PivotRule::kStopAtZeroColumn;
  for (int k = 1; k <= below; ++k) {
    if (element(k) != 0) return true;
  }
  return false;
}

/// The textbook loop itself, on rows counted from 0.
Elimination EliminateStepByStep(Matrix& W, int columns, PivotRule rule, double* order) {
  Elimination result;
  double* const numbers = W.Data();
  const std::ptrdiff_t m = W.Rows();
  const std::ptrdiff_t n = W.Cols();
  for (int i = 0; i < columns; ++i) {
    double* const pivot = numbers + i * n + i;
    const int below = static_cast<int>(m) - i - 1;
    const auto element = [pivot, n](std::ptrdiff_t k) { return pivot[k * n]; };
    const std::ptrdiff_t p = rule == PivotRule::kDiagonalElement
                                 ? 0
                                 : FindLargest<kForeseenSearch>(below + 1, element).place;
    if (pivot[p * n] == 0) {
      if (!EndsAtZero(rule, below, element)) continue;
      result.complete = false;
      break;
    }
    if (p != 0) {
      if (order != nullptr) std::swap(order[i], order[i + p]);
      ++result.exchanges;
      double* const row = pivot - i;
      for (std::ptrdiff_t j = 0; j < n; ++j) std::swap(row[j], row[p * n + j]);
    }
    if (below > 0) EliminateRows(pivot, pivot + n, n, below, 0, static_cast<int>(n) - i - 1);
  }
  return result;
}

class Eliminator {
 public:
  Eliminator(Matrix& W, PivotRule rule, double* order, WorkMeter& meter,
             const EliminationSizes& sizes)
      : W_(W),
        rule_(rule),
        order_(order),
        meter_(meter),
        sizes_(sizes),
        eliminated_(W.Cols()),
        panel_(W.Rows()) {}

  Elimination Run(int columns);

 private:
  void EliminateBlock(int first, int last, int right);
  void EliminatePanel(int first, int last);
  bool EliminatePanelColumn(const View& panel, int first, int j, double& largest);
  void TakeStepsInRows(int first, int top, int bottom, int from, int to);
  void TakeSteps(int first, int last, int top, int bottom, int from, int to);

  void NoteExchange(int i, int p);

  Matrix& W_;
  const PivotRule rule_;
  double* const order_;
  WorkMeter& meter_;
  const EliminationSizes& sizes_;
  Vector<char> eliminated_;   ///< For each column, whether it had a pivot.
  bool missesPivot_ = false;  ///< Whether a column had none.
  ColumnPanel panel_;
  Elimination result_;
};

Elimination Eliminator::Run(int columns) {
  for (int first = 1; first <= columns && result_.complete; first += sizes_.block) {
    const int last = std::min(first + sizes_.block - 1, columns);
    // There is no other block for what stands right of the last one.
    const int right = last == columns ? W_.Cols() : last;
    EliminateBlock(first, last, right);
    for (int from = right + 1; from <= W_.Cols(); from += sizes_.strip) {
      const int to = std::min(from + sizes_.strip - 1, W_.Cols());
      TakeStepsInRows(first, first, last, from, to);
    }
    TakeSteps(first, last, last + 1, W_.Rows(), last + 1, W_.Cols());
  }
  return result_;
}

/// Leaves the columns up to `right` in the rows first..last as they are in the end.
void Eliminator::EliminateBlock(int first, int last, int right) {
  const int rows = W_.Rows();
  for (int left = first; left <= last; left += sizes_.panel) {
    const int end = std::min(left + sizes_.panel - 1, last);
    TakeSteps(first, left - 1, left, rows, left, end);
    EliminatePanel(left, end);
    TakeStepsInRows(first, left, end, end + 1, right);
    if (!result_.complete) {
      // What is below has been waiting for panels that do not come any more.
      TakeSteps(first, end, end + 1, rows, end + 1, last);
      TakeSteps(first, end, end + 1, last, last + 1, right);
      return;
    }
  }
}

void Eliminator::EliminatePanel(int first, int last) {
  const View place = Part(W_, first, first, W_.Rows() - first + 1, last - first + 1);
  const View panel = panel_.Read(place);
  double largest = LargestMagnitude(panel.first, panel.cols);
  for (int j = 0; j < panel.rows && result_.complete; ++j) {
    eliminated_(first + j) = EliminatePanelColumn(panel, first, j, largest);
    missesPivot_ = missesPivot_ || eliminated_(first + j) == 0;
  }
  ColumnPanel::Write(panel, place);
  meter_.Add(0.5 * panel.rows * panel.rows * panel.cols);
}

/// Row j of `panel` holds column first + j of W from row `first` on; its diagonal element is
/// panel(j, j). `largest` is the largest magnitude at and below it, and becomes that of the next
/// column. False where the column has no pivot.
bool Eliminator::EliminatePanelColumn(const View& panel, int first, int j, double& largest) {
  double* const column = &panel(j, j);
  const int below = panel.cols - j - 1;
  const int p =
      rule_ == PivotRule::kDiagonalElement ? 0 : PlaceOfLargest(largest, column, below + 1);
  const int later = panel.rows - j - 1;
  if (column[p] == 0) {
    result_.complete = !EndsAtZero(rule_, below, [column](int k) { return column[k]; });
    if (later > 0) largest = LargestMagnitude(&panel(j + 1, j + 1), below);
    return false;
  }
  if (p != 0) {
    for (int r = 0; r < panel.rows; ++r) std::swap(panel(r, j), panel(r, j + p));
    SwapNumbers(W_.Row(first + j), W_.Row(first + j + p), W_.Cols());
    NoteExchange(first + j - 1, first + j + p - 1);
  }
  PanelStep step;
  step.column = column + 1;
  step.pivot = column[0];
  step.count = below;
  step.others = later;
  for (int r = 0; r < later; ++r) {
    step.other[r] = column + (r + 1) * panel.rowStride + 1;
    step.multiplier[r] = step.other[r][-1];
  }
  largest = TakePanelStep(step);
  return true;
}

/// The rows top..bottom take the steps of the rows first..bottom above their own in the columns
/// from..to.
void Eliminator::TakeStepsInRows(int first, int top, int bottom, int from, int to) {
  if (from > to) return;
  for (; top <= bottom; top += sizes_.panel) {
    const int end = std::min(top + sizes_.panel - 1, bottom);
    TakeSteps(first, top - 1, top, end, from, to);
    if (missesPivot_) {
      for (int i = top + 1; i <= end; ++i) TakeSteps(top, i - 1, i, i, from, to);
    } else {
      const int rows = end - top + 1;
      EliminatePivotRows(Part(W_, top, top, rows, rows), Part(W_, top, from, rows, to - from + 1));
      meter_.Add(0.5 * rows * rows * (to - from + 1));
    }
  }
}

/// Takes the steps of the columns first..last, all that had a pivot, in the rows top..bottom of the
/// columns from..to.
void Eliminator::TakeSteps(int first, int last, int top, int bottom, int from, int to) {
  if (top > bottom || from > to) return;
  for (int run = first; run <= last;) {
    int end = missesPivot_ ? run : last + 1;  // One behind.
    while (end <= last && eliminated_(end) != 0) ++end;
    if (end > run) {
      SubtractProduct(Part(W_, top, run, bottom - top + 1, end - run),
                      Part(W_, run, from, end - run, to - from + 1),
                      Part(W_, top, from, bottom - top + 1, to - from + 1), meter_);
    }
    run = end + 1;
  }
}

/// Rows counted from 0.
void Eliminator::NoteExchange(int i, int p) {
  if (order_ != nullptr) std::swap(order_[i], order_[p]);
  ++result_.exchanges;
}

}  // namespace

Elimination Eliminate(Matrix& W, int columns, PivotRule rule, WorkMeter& meter, double* order,
                      const EliminationSizes& sizes) {
  if (columns < 1 && order == nullptr) return {};
  if (order != nullptr) std::iota(order, order + W.Rows(), 1.0);
  if (std::max(W.Rows(), W.Cols()) <= sizes.smallOrder) {
    const Elimination done = EliminateStepByStep(W, columns, rule, order);
    meter.Add(EliminationWork(W.Rows(), W.Cols(), columns));
    return done;
  }
  return Eliminator(W, rule, order, meter, sizes).Run(columns);
}

double ReduceToDeterminant(Matrix& W, WorkMeter& meter, const EliminationSizes& sizes) {
  const int n = W.Rows();
  const Elimination done = Eliminate(W, n - 1, PivotRule::kStopAtZeroColumn, meter, nullptr, sizes);
  double product = 1.0;
  for (int k = 1; k <= n; ++k) product *= W(k, k);
  return AlternatingSign(done.exchanges) * product;
}

void RefuseElement() {
  CheckArithmetic();
  throw RuntimeFault(Fault::kSubscriptOutOfRange);
}

}  // namespace qmx
