#include "algorithms/gauss_jordan.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

#include "algorithms/ordered_product.h"

// Columns are exchanged block by block. The steps of a block are made in its own columns first, and
// their factors f are kept; then every other column takes all of them at once:
//
//         other    first..last   other
//       +--------+-------------+--------+      1. Rows first..last, from the top down, take the
//       |   A1   |      F1     |   B1   |         steps above their own: these are the pivot rows
//       U.
//       +--------+-------------+--------+      2. A1 := A1 - F1·U and A3 := A3 - F3·U, which is
//       |   A2   |      F2     |   B2   |         where the time goes; B1 and B3 likewise.
//       +--------+-------------+--------+      3. Each row of U is divided by its pivot and takes
//       |   A3   |      F3     |   B3   |         the steps below its own.
//       +--------+-------------+--------+
//
// A block is exchanged in the same way from two halves, down to a panel of a few columns that is
// copied out with its columns as rows. Every element takes its steps one by one in the order of the
// columns, as in the textbook loop.

namespace qmx {
namespace {

constexpr int kBlockColumns = 128;
constexpr int kPanelColumns = 8;

// Up to here the bookkeeping of blocks takes longer than it saves.
constexpr int kSmallOrder = 72;

class JordanExchanger {
 public:
  JordanExchanger(Matrix& W, EqualPivots rule) : W_(W), rule_(rule), n_(W.Rows()) {
    result_.order.resize(n_);
    std::iota(result_.order.begin(), result_.order.end(), 1);
    result_.pivots.reserve(n_);
  }

  JordanExchange Run(Progress& progress);

 private:
  void ExchangeStepByStep();
  void ExchangeColumn(int i);

  void ExchangeBlock(int first, int last);
  void ExchangePanel(int first, int last);
  void ExchangePanelColumn(const View& panel, int first, int s);
  void ApplyBlock(int first, int last, int from, int to);
  void TakeStepsAbove(int first, int last, int from, int to);
  void TakeStepsBelow(int first, int last, int from, const View& pivotRows);

  template <class Magnitude>
  int PivotRow(int i, Magnitude magnitude) const;
  void ExchangeRows(int i, int p);
  ConstView Factors(int row, int step, int rows, int steps) const;

  Matrix& W_;
  const EqualPivots rule_;
  const int n_;
  int block_ = 1;  ///< First column of the block in work.
  std::vector<double> panel_;
  std::vector<double> factors_;  ///< The factors of each step of the block, row by row of W.
  std::vector<double> pivotRows_;
  JordanExchange result_;
};

JordanExchange JordanExchanger::Run(Progress& progress) {
  if (n_ <= kSmallOrder) {
    ExchangeStepByStep();
    progress.Report(1);
    return std::move(result_);
  }
  panel_.resize(static_cast<std::size_t>(kPanelColumns) * n_);
  factors_.resize(static_cast<std::size_t>(std::min(kBlockColumns, n_)) * n_);
  pivotRows_.resize(factors_.size());
  for (block_ = 1; block_ <= n_ && result_.complete; block_ += kBlockColumns) {
    const int last = std::min(block_ + kBlockColumns - 1, n_);
    ExchangeBlock(block_, last);
    ApplyBlock(block_, last, 1, block_ - 1);
    ApplyBlock(block_, last, last + 1, n_);
    progress.Report(static_cast<double>(last) / n_);
  }
  return std::move(result_);
}

/// The textbook loop itself.
void JordanExchanger::ExchangeStepByStep() {
  for (int i = 1; i <= n_; ++i) {
    const int p = PivotRow(i, [&](int k) { return std::abs(W_(k, i)); });
    if (p == 0) {
      result_.complete = false;
      return;
    }
    if (p != i) ExchangeRows(i, p);
    ExchangeColumn(i);
  }
}

void JordanExchanger::ExchangeColumn(int i) {
  double* const upper = W_.Row(i);
  const double pivot = upper[i - 1];
  EliminateRows(upper + i - 1, W_.Row(1) + i - 1, n_, i - 1, i - 1, n_ - i);
  if (i < n_) EliminateRows(upper + i - 1, upper + n_ + i - 1, n_, n_ - i, i - 1, n_ - i);
  for (int k = 1; k <= n_; ++k) W_(k, i) = -W_(k, i);
  upper[i - 1] = pivot;
  result_.pivots.push_back(pivot);
  for (int j = 0; j < n_; ++j) upper[j] /= pivot;
  upper[i - 1] = 1.0 / pivot;
}

/// The row of the pivot of column i by the rule, 0 for none.
template <class Magnitude>
int JordanExchanger::PivotRow(int i, Magnitude magnitude) const {
  // With the upper row as the rule the diagonal element leads, even where it is no number.
  const bool upper = rule_ == EqualPivots::kUpperRow;
  int p = upper ? i : 0;
  double largest = upper ? magnitude(i) : 0.0;
  for (int k = i; k <= n_; ++k) {
    const double candidate = magnitude(k);
    const bool first =
        !upper && candidate == largest && p != 0 && result_.order[k - 1] < result_.order[p - 1];
    if (candidate > largest || first) {
      largest = candidate;
      p = k;
    }
  }
  return largest == 0 ? 0 : p;
}

void JordanExchanger::ExchangeRows(int i, int p) {
  W_.SwapRows(i, p);
  std::swap(result_.order[i - 1], result_.order[p - 1]);
  ++result_.exchanges;
}

void JordanExchanger::ExchangeBlock(int first, int last) {
  const int columns = last - first + 1;
  if (columns <= kPanelColumns) {
    ExchangePanel(first, last);
    return;
  }
  const int panels = (columns + kPanelColumns - 1) / kPanelColumns;
  const int middle = first + panels / 2 * kPanelColumns - 1;
  ExchangeBlock(first, middle);
  ApplyBlock(first, middle, middle + 1, last);
  if (!result_.complete) return;
  ExchangeBlock(middle + 1, last);
  ApplyBlock(middle + 1, last, first, middle);
}

void JordanExchanger::ExchangePanel(int first, int last) {
  const View panel{panel_.data(), last - first + 1, n_, n_, 1};
  const View place = Part(W_, 1, first, n_, panel.rows);
  for (int k = 0; k < n_; ++k) {
    for (int s = 0; s < panel.rows; ++s) panel(s, k) = place(k, s);
  }
  for (int s = 0; s < panel.rows && result_.complete; ++s) ExchangePanelColumn(panel, first, s);
  for (int k = 0; k < n_; ++k) {
    for (int s = 0; s < panel.rows; ++s) place(k, s) = panel(s, k);
  }
}

/// Row s of `panel` holds column first + s of W.
void JordanExchanger::ExchangePanelColumn(const View& panel, int first, int s) {
  const int i = first + s;
  double* column = &panel(s, 0);
  const int p = PivotRow(i, [column](int k) { return std::abs(column[k - 1]); });
  if (p == 0) {
    result_.complete = false;
    return;
  }
  if (p != i) {
    ExchangeRows(i, p);
    for (int r = 0; r < panel.rows; ++r) std::swap(panel(r, i - 1), panel(r, p - 1));
    for (int step = block_; step < i; ++step) {
      double* factors = &factors_[static_cast<std::size_t>(step - block_) * n_];
      std::swap(factors[i - 1], factors[p - 1]);
    }
  }
  const double pivot = column[i - 1];
  result_.pivots.push_back(pivot);
  double* factors = &factors_[static_cast<std::size_t>(i - block_) * n_];
  std::copy_n(column, n_, factors);
  DivideBy(pivot, factors, n_);

  // The other columns of the panel, left and right of this one, above and below row i.
  const int right = panel.rows - s - 1;
  const auto subtract = [&](int r, int rows, int k, int count) {
    if (rows == 0 || count == 0) return;
    SubtractProduct({&panel(r, i - 1), rows, 1, n_, 1}, {factors + k, 1, count, n_, 1},
                    {&panel(r, k), rows, count, n_, 1});
  };
  subtract(0, s, 0, i - 1);
  subtract(0, s, i, n_ - i);
  subtract(s + 1, right, 0, i - 1);
  subtract(s + 1, right, i, n_ - i);
  for (int r = 0; r < panel.rows; ++r) panel(r, i - 1) /= pivot;
  for (int k = 0; k < n_; ++k) column[k] = -factors[k];
  column[i - 1] = 1.0 / pivot;
}

/// The factors of `steps` steps from `step` on in `rows` rows from `row` on.
ConstView JordanExchanger::Factors(int row, int step, int rows, int steps) const {
  return {factors_.data() + static_cast<std::size_t>(step - block_) * n_ + (row - 1), rows, steps,
          1, n_};
}

/// Makes the steps of the columns first..last, as far as they got, in the columns from..to.
void JordanExchanger::ApplyBlock(int first, int last, int from, int to) {
  last = std::min(last, static_cast<int>(result_.pivots.size()));
  if (from > to || first > last) return;
  const int steps = last - first + 1;
  const int cols = to - from + 1;
  TakeStepsAbove(first, last, from, to);
  const View U{pivotRows_.data(), steps, cols, cols, 1};
  for (int s = 0; s < steps; ++s) std::copy_n(&W_(first + s, from), cols, &U(s, 0));
  SubtractProduct(Factors(1, first, first - 1, steps), U, Part(W_, 1, from, first - 1, cols));
  SubtractProduct(Factors(last + 1, first, n_ - last, steps), U,
                  Part(W_, last + 1, from, n_ - last, cols));
  for (int i = first; i <= last; ++i) DivideBy(result_.pivots[i - 1], &W_(i, from), cols);
  TakeStepsBelow(first, last, from, U);
}

/// Rows first..last take the steps above their own.
void JordanExchanger::TakeStepsAbove(int first, int last, int from, int to) {
  if (first == last) return;
  const int cols = to - from + 1;
  const int middle = (first + last) / 2;
  const int above = middle - first + 1;
  TakeStepsAbove(first, middle, from, to);
  SubtractProduct(Factors(middle + 1, first, last - middle, above),
                  Part(W_, first, from, above, cols),
                  Part(W_, middle + 1, from, last - middle, cols));
  TakeStepsAbove(middle + 1, last, from, to);
}

/// Rows first..last take the steps below their own, whose rows before the division are given.
void JordanExchanger::TakeStepsBelow(int first, int last, int from, const View& pivotRows) {
  if (first == last) return;
  const int cols = pivotRows.cols;
  const int middle = (first + last) / 2;
  const int above = middle - first + 1;
  const int below = last - middle;
  const View lower{&pivotRows(above, 0), below, cols, cols, 1};
  TakeStepsBelow(first, middle, from, {pivotRows.first, above, cols, cols, 1});
  SubtractProduct(Factors(first, middle + 1, above, below), lower,
                  Part(W_, first, from, above, cols));
  TakeStepsBelow(middle + 1, last, from, lower);
}

}  // namespace

JordanExchange ExchangeAllColumns(Matrix& W, EqualPivots rule, Progress& progress) {
  return JordanExchanger(W, rule).Run(progress);
}

}  // namespace qmx
