#include "algorithms/elimination.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>
#include <vector>

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
constexpr int kSmallOrder = 56;

/// The place of the largest magnitude, the first of equals.
int PlaceOfLargest(const double* x, int count) {
  const double largest = LargestMagnitude(x, count);
  const double* place =
      std::find_if(x, x + count, [largest](double a) { return std::abs(a) == largest; });
  // Only a NaN in the first place is equal to nothing.
  return place == x + count ? 0 : static_cast<int>(place - x);
}

/// The same for `count` numbers of a column, `stride` apart.
std::ptrdiff_t PivotRow(const double* column, std::ptrdiff_t stride, std::ptrdiff_t count) {
  std::ptrdiff_t p = 0;
  for (std::ptrdiff_t k = 1; k < count; ++k) {
    if (std::abs(column[k * stride]) > std::abs(column[p * stride])) p = k;
  }
  return p;
}

class Eliminator {
 public:
  Eliminator(Matrix& W, PivotRule rule, double* order) : W_(W), rule_(rule), order_(order) {
    if (order != nullptr) std::iota(order, order + W.Rows(), 1.0);
  }

  Elimination Run(int columns, Progress& progress);

 private:
  void EliminateStepByStep(int columns);

  void EliminateBlock(int first, int last);
  void EliminatePanel(int first, int last);
  bool EliminatePanelColumn(const View& panel, int first, int j);
  void ApplyBlock(int first, int last, int from, int to);
  void ApplyToRows(int first, int last, int from, int to);

  template <class Element>
  bool EndsAtZero(int below, Element element) const;
  void NoteExchange(int i, int p);

  Matrix& W_;
  const PivotRule rule_;
  double* const order_;
  std::vector<char> eliminated_;  ///< For each column, from 1, whether it had a pivot.
  std::vector<double> panel_;
  Elimination result_;
};

Elimination Eliminator::Run(int columns, Progress& progress) {
  if (std::max(W_.Rows(), W_.Cols()) <= kSmallOrder) {
    EliminateStepByStep(columns);
    progress.Report(1);
    return result_;
  }
  eliminated_.resize(W_.Cols() + 1);
  panel_.resize(static_cast<std::size_t>(kPanelColumns) * W_.Rows());
  for (int first = 1; first <= columns && result_.complete; first += kBlockColumns) {
    const int last = std::min(first + kBlockColumns - 1, columns);
    EliminateBlock(first, last);
    ApplyBlock(first, last, last + 1, W_.Cols());
    progress.Report(EliminatedPart(last, columns));
  }
  return result_;
}

/// The textbook loop itself, on rows counted from 0.
void Eliminator::EliminateStepByStep(int columns) {
  double* const numbers = W_.Data();
  const std::ptrdiff_t m = W_.Rows();
  const std::ptrdiff_t n = W_.Cols();
  for (int i = 0; i < columns; ++i) {
    double* const pivot = numbers + i * n + i;
    const std::ptrdiff_t p = rule_ == PivotRule::kDiagonalElement ? 0 : PivotRow(pivot, n, m - i);
    if (pivot[p * n] == 0) {
      if (!EndsAtZero(static_cast<int>(m) - i - 1, [=](int k) { return pivot[k * n]; })) continue;
      result_.complete = false;
      return;
    }
    if (p != 0) {
      NoteExchange(i, i + static_cast<int>(p));
      double* const row = pivot - i;
      for (std::ptrdiff_t j = 0; j < n; ++j) std::swap(row[j], row[p * n + j]);
    }
    const int below = static_cast<int>(m) - i - 1;
    if (below > 0) EliminateRows(pivot, pivot + n, n, below, 0, static_cast<int>(n) - i - 1);
  }
}

/// What the pivot rule says to a column without a pivot; element(k) is k rows below the diagonal.
template <class Element>
bool Eliminator::EndsAtZero(int below, Element element) const {
  if (rule_ != PivotRule::kDiagonalElement) return rule_ == PivotRule::kStopAtZeroColumn;
  for (int k = 1; k <= below; ++k) {
    if (element(k) != 0) return true;
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
    result_.complete = !EndsAtZero(below, [column](int k) { return column[k]; });
    return false;
  }
  if (p != 0) {
    for (int r = 0; r < panel.rows; ++r) std::swap(panel(r, j), panel(r, j + p));
    W_.SwapRows(first + j, first + j + p);
    NoteExchange(first + j - 1, first + j + p - 1);
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

/// Rows counted from 0.
void Eliminator::NoteExchange(int i, int p) {
  if (order_ != nullptr) std::swap(order_[i], order_[p]);
  ++result_.exchanges;
}

}  // namespace

Elimination Eliminate(Matrix& W, int columns, PivotRule rule, Progress& progress, double* order) {
  if (columns < 1 && order == nullptr) return {};
  return Eliminator(W, rule, order).Run(columns, progress);
}

double ReduceToDeterminant(Matrix& W, Progress& progress) {
  const int n = W.Rows();
  const Elimination done = Eliminate(W, n - 1, PivotRule::kStopAtZeroColumn, progress);
  double product = 1.0;
  for (int k = 1; k <= n; ++k) product *= W(k, k);
  return AlternatingSign(done.exchanges) * product;
}

void RefuseElement() {
  CheckArithmetic();
  throw RuntimeFault(Fault::kSubscriptOutOfRange);
}

}  // namespace qmx
