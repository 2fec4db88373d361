#include "algorithms/elimination.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "algorithms/ordered_product.h"
#include "base/arithmetic.h"
#include "base/fault.h"

// Columns are eliminated block by block. No element right of a block needs to know before the block
// is done how it will be changed, and then all steps of the block go over it at once:
//
//          first..last    right           1. Eliminate the block in all its rows.
//         +------------+---------+        2. Rows first..last of the right part, from the top down:
//         |  \   U11   |   U12   |           each takes the steps of the rows above it.
//         |  L11  \    |         |        3. A22 := A22 - L21·U12, which is where the time goes.
//         +------------+---------+
//         |    L21     |   A22   |
//         +------------+---------+
//
// A block is eliminated in the same way from two halves, down to a panel of a few columns. A panel
// is copied out with its columns as rows, so that what belongs together lies together. Every
// element takes its steps one by one in the order of the columns, as in the textbook loop.

namespace qmx {
namespace {

constexpr int kBlockColumns = 128;
constexpr int kPanelColumns = 8;

// Up to here the bookkeeping of blocks takes longer than it saves.
constexpr int kSmallOrder = 40;

// Shorter rows are quicker done in place than by a call.
constexpr int kFewColumns = 8;

/// The place of the largest magnitude, the first of equals.
int PlaceOfLargest(const double* x, int count) {
  const double largest = LargestMagnitude(x, count);
  const double* place =
      std::find_if(x, x + count, [largest](double a) { return std::abs(a) == largest; });
  // Only a NaN in the first place is equal to nothing.
  return place == x + count ? 0 : static_cast<int>(place - x);
}

class Eliminator {
 public:
  Eliminator(Matrix& W, PivotRule rule) : W_(W), rule_(rule) {
    result_.order.resize(W.Rows());
    std::iota(result_.order.begin(), result_.order.end(), 1);
  }

  Elimination Run(int columns, Progress& progress);

 private:
  void EliminateStepByStep(int columns);
  int PivotRow(int i) const;
  void EliminateBelow(int i);

  void EliminateBlock(int first, int last);
  void EliminatePanel(int first, int last);
  bool EliminatePanelColumn(const View& panel, int first, int j);
  void ApplyBlock(int first, int last, int from, int to);
  void ApplyToRows(int first, int last, int from, int to);

  bool EndsAtZero(const ConstView& column) const;
  void ExchangeRows(int i, int p);

  Matrix& W_;
  const PivotRule rule_;
  std::vector<char> eliminated_;  ///< For each column, from 1, whether it had a pivot.
  std::vector<double> panel_;
  Elimination result_;
};

Elimination Eliminator::Run(int columns, Progress& progress) {
  if (std::min(W_.Rows(), W_.Cols()) <= kSmallOrder) {
    EliminateStepByStep(columns);
    progress.Report(1);
    return std::move(result_);
  }
  eliminated_.resize(W_.Cols() + 1);
  panel_.resize(static_cast<std::size_t>(kPanelColumns) * W_.Rows());
  for (int first = 1; first <= columns && result_.complete; first += kBlockColumns) {
    const int last = std::min(first + kBlockColumns - 1, columns);
    EliminateBlock(first, last);
    ApplyBlock(first, last, last + 1, W_.Cols());
    progress.Report(EliminatedPart(last, columns));
  }
  return std::move(result_);
}

/// The textbook loop itself.
void Eliminator::EliminateStepByStep(int columns) {
  for (int i = 1; i <= columns; ++i) {
    const int p = PivotRow(i);
    if (W_(p, i) != 0) {
      if (p != i) ExchangeRows(i, p);
      EliminateBelow(i);
    } else if (EndsAtZero(Part(W_, i, i, W_.Rows() - i + 1, 1))) {
      result_.complete = false;
      return;
    }
  }
}

int Eliminator::PivotRow(int i) const {
  int p = i;
  if (rule_ == PivotRule::kDiagonalElement) return p;
  double largest = std::abs(W_(i, i));
  for (int k = i + 1; k <= W_.Rows(); ++k) {
    const double magnitude = std::abs(W_(k, i));
    if (magnitude > largest) {
      largest = magnitude;
      p = k;
    }
  }
  return p;
}

void Eliminator::EliminateBelow(int i) {
  const int below = W_.Rows() - i;
  const int right = W_.Cols() - i;
  const double pivot = W_(i, i);
  if (right <= kFewColumns) {
    const double* upper = W_.Row(i) + i;
    for (int k = i + 1; k <= W_.Rows(); ++k) {
      double* lower = W_.Row(k) + i;
      const double f = lower[-1] / pivot;
      lower[-1] = f;
      for (int j = 0; j < right; ++j) lower[j] -= f * upper[j];
    }
    return;
  }
  for (int k = i + 1; k <= W_.Rows(); ++k) W_(k, i) /= pivot;
  SubtractProduct(Part(W_, i + 1, i, below, 1), Part(W_, i, i + 1, 1, right),
                  Part(W_, i + 1, i + 1, below, right));
}

/// What the pivot rule says to a column, from its diagonal element on, without a pivot.
bool Eliminator::EndsAtZero(const ConstView& column) const {
  if (rule_ != PivotRule::kDiagonalElement) return rule_ == PivotRule::kStopAtZeroColumn;
  for (int k = 1; k < column.rows; ++k) {
    if (column(k, 0) != 0) return true;
  }
  return false;
}

void Eliminator::EliminateBlock(int first, int last) {
  const int columns = last - first + 1;
  if (columns <= kPanelColumns) {
    EliminatePanel(first, last);
    return;
  }
  const int panels = (columns + kPanelColumns - 1) / kPanelColumns;
  const int middle = first + panels / 2 * kPanelColumns - 1;
  EliminateBlock(first, middle);
  ApplyBlock(first, middle, middle + 1, last);
  if (result_.complete) EliminateBlock(middle + 1, last);
}

void Eliminator::EliminatePanel(int first, int last) {
  const int rows = W_.Rows() - first + 1;
  const View panel{panel_.data(), last - first + 1, rows, rows, 1};
  const View place = Part(W_, first, first, rows, panel.rows);
  for (int k = 0; k < rows; ++k) {
    for (int j = 0; j < panel.rows; ++j) panel(j, k) = place(k, j);
  }
  for (int j = 0; j < panel.rows && result_.complete; ++j) {
    eliminated_[first + j] = EliminatePanelColumn(panel, first, j);
  }
  for (int k = 0; k < rows; ++k) {
    for (int j = 0; j < panel.rows; ++j) place(k, j) = panel(j, k);
  }
}

/// Row j of `panel` holds column first + j of W from row `first` on; its diagonal element is
/// panel(j, j). False where the column has no pivot.
bool Eliminator::EliminatePanelColumn(const View& panel, int first, int j) {
  double* column = &panel(j, j);
  const int below = panel.cols - j - 1;
  const int p = rule_ == PivotRule::kDiagonalElement ? 0 : PlaceOfLargest(column, below + 1);
  if (column[p] == 0) {
    result_.complete = !EndsAtZero({column, below + 1, 1, 1, 1});
    return false;
  }
  if (p != 0) {
    for (int r = 0; r < panel.rows; ++r) std::swap(panel(r, j), panel(r, j + p));
    ExchangeRows(first + j, first + j + p);
  }
  DivideBy(column[0], column + 1, below);
  // panel(r, j) is the element of the pivot row in each later column.
  const int later = panel.rows - j - 1;
  const View pivotRow{column + panel.rowStride, later, 1, panel.rowStride, 1};
  const View factors{column + 1, 1, below, panel.rowStride, 1};
  const View rest{column + panel.rowStride + 1, later, below, panel.rowStride, 1};
  SubtractProduct(pivotRow, factors, rest);
  return true;
}

/// Takes the steps of the columns first..last in the columns from..to, all at once between two
/// columns that had no pivot.
void Eliminator::ApplyBlock(int first, int last, int from, int to) {
  if (from > to) return;
  const auto begin = eliminated_.begin();
  for (int run = first; run <= last;) {
    if (eliminated_[run] == 0) {
      ++run;
      continue;
    }
    const int end =
        static_cast<int>(std::find(begin + run, begin + last + 1, 0) - begin);  // One behind.
    ApplyToRows(run, end - 1, from, to);
    SubtractProduct(Part(W_, end, run, W_.Rows() - end + 1, end - run),
                    Part(W_, run, from, end - run, to - from + 1),
                    Part(W_, end, from, W_.Rows() - end + 1, to - from + 1));
    run = end;
  }
}

/// Takes the steps of the columns first..last in the rows first..last of the columns from..to.
void Eliminator::ApplyToRows(int first, int last, int from, int to) {
  constexpr int kFewRows = 4;
  const int cols = to - from + 1;
  if (last - first < kFewRows) {
    for (int i = first + 1; i <= last; ++i) {
      SubtractProduct(Part(W_, i, first, 1, i - first), Part(W_, first, from, i - first, cols),
                      Part(W_, i, from, 1, cols));
    }
    return;
  }
  const int middle = (first + last) / 2;
  ApplyToRows(first, middle, from, to);
  SubtractProduct(Part(W_, middle + 1, first, last - middle, middle - first + 1),
                  Part(W_, first, from, middle - first + 1, cols),
                  Part(W_, middle + 1, from, last - middle, cols));
  ApplyToRows(middle + 1, last, from, to);
}

void Eliminator::ExchangeRows(int i, int p) {
  W_.SwapRows(i, p);
  std::swap(result_.order[i - 1], result_.order[p - 1]);
  ++result_.exchanges;
}

}  // namespace

Elimination Eliminate(Matrix& W, int columns, PivotRule rule, Progress& progress) {
  return Eliminator(W, rule).Run(columns, progress);
}

double ReduceToDeterminant(Matrix& W, Progress& progress) {
  const int n = W.Rows();
  const Elimination done = Eliminate(W, n - 1, PivotRule::kStopAtZeroColumn, progress);
  double product = 1.0;
  for (int k = 1; k <= n; ++k) product *= W(k, k);
  return AlternatingSign(done.exchanges) * product;
}

void RequireElement(bool present) {
  if (present) return;
  CheckArithmetic();
  throw RuntimeFault(Fault::kSubscriptOutOfRange);
}

}  // namespace qmx
