// SPDX-License-Identifier: MIT
#include "algorithms/gauss_jordan.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "algorithms/elimination_steps.h"
#include "algorithms/exchanger.h"
#include "algorithms/ordered_product.h"
#include "algorithms/shared_work.h"

// Columns are exchanged block by block. The steps of a block are made in its own columns first, and
// their factors f are kept; then every other column takes all of them at once:
//
//         other    first..last   other
//       +--------+-------------+--------+   1. Rows first..last, from the top down, take the steps
//       |   A1   |      F1     |   B1   |      above their own: these are the pivot rows U.
//       +--------+-------------+--------+   2. Each of them is divided by its pivot and takes the
//       |   A2   |      F2     |   B2   |      steps below its own.
//       +--------+-------------+--------+   3. A1 := A1 - F1·U and A3 := A3 - F3·U, which is where
//       |   A3   |      F3     |   B3   |      the time goes; B1 and B3 likewise.
//       +--------+-------------+--------+
//
// Where a team shares the work, the blocks are lanes that take the steps of all other blocks one by
// one: a block is exchanged as soon as it has those of the blocks before it, while others, left and
// right, are still behind. The factors of a few blocks at a time are kept for them.
//
// A block is exchanged in the same way from two halves, down to a panel of a few columns that is
// copied out with its columns as rows. Every element takes its steps one by one in the order of the
// columns, as in the textbook loop.

namespace qmx {
namespace {

/// Columns that are exchanged before all others take their steps at once.
struct Block {
  int first = 1;
  int last = 0;
  int done = 0;                             ///< The last column that was exchanged.
  View factors = {};                        ///< Of its steps, in the rows of the matrix.
  std::vector<RowExchange> exchanges = {};  ///< Which other columns have not made yet.

  /// Those of `steps` steps from `step` on in `rows` rows from `row` on.
  View Factors(int row, int step, int rows, int steps) const {
    return Part(factors, row - 1, step - first, rows, steps);
  }
};

class BlockExchanger : public Exchanger {
 public:
  BlockExchanger(Matrix& W, EqualPivots rule, WorkMeter& meter, const ExchangeSizes& sizes)
      : Exchanger(W, rule, sizes), meter_(meter) {}

  JordanExchange Run();

 private:
  void RunAlone();
  void RunShared();
  Block BlockFrom(int first, int columns, Matrix& factors) const;
  void ExchangeBlock(Block& block, int first, int last, WorkMeter& meter);
  void ExchangePanel(Block& block, int first, int last, WorkMeter& meter);
  bool ExchangePanelColumn(Block& block, const View& panel, const View& factors, int first, int s,
                           double& largest);
  double TakeStep(const View& panel, int i, int s);
  void ApplyBlock(const Block& block, int first, int last, int from, int to, WorkMeter& meter);
  void TakeStepsInPivotRows(const Block& block, int first, int last, int from, const View& U);
  void Follow(const Block& block, int from, int to, WorkMeter& meter);

  int PivotRow(int i, const double* column, double largest) const;
  void TakePivotRow(Block& block, int i, int p);

  WorkMeter& meter_;
  bool shared_ = false;  ///< A block exchanges rows in its own columns alone; the others follow.
  ColumnPanel panel_;
  ColumnPanel panelFactors_;  ///< The factors of the steps of the panel in work.
  Matrix pivotRows_;          ///< U, without gaps between its rows; each strip has its own place.
};

/// The same in a column that lies together and whose largest magnitude from row i on is known.
int BlockExchanger::PivotRow(int i, const double* column, double largest) const {
  const bool upper = rule_ == EqualPivots::kUpperRow;
  if (!upper && std::isnan(largest)) {
    return Exchanger::PivotRow(i, [column](int k) { return column[k - 1]; });
  }
  if (largest == 0) return 0;
  const int p = i + PlaceOfLargest(largest, column + i - 1, n_ - i + 1);
  if (upper) return p;
  return FirstNumber(p, [&](int k) { return k + PlaceOf(largest, column + k - 1, n_ - k + 1); });
}

void BlockExchanger::TakePivotRow(Block& block, int i, int p) {
  if (shared_) {
    block.exchanges.push_back({i, p});
    ExchangeRows(W_, {&block.exchanges.back(), 1}, block.first, block.last);
  } else {
    SwapNumbers(W_.Row(i), W_.Row(p), n_);
  }
  NoteExchange(i, p);
}

JordanExchange BlockExchanger::Run() {
  panel_ = ColumnPanel(n_);
  panelFactors_ = ColumnPanel(n_);
  pivotRows_ = Matrix::Unset(n_, std::min(sizes_.block, n_));
  if (n_ < sizes_.shareFrom) {
    RunAlone();
    return std::move(result_);
  }
  const Attempt attempt(SharedTeam(), "exchange", 1.0 * n_ * n_ * n_);
  shared_ = attempt.IsShared();
  if (shared_) {
    RunShared();
  } else {
    RunAlone();
  }
  return std::move(result_);
}

void BlockExchanger::RunAlone() {
  Matrix factors = Matrix::Unset(n_, sizes_.block + sizes_.factorGap);
  for (int first = 1; first <= n_ && result_.complete; first += sizes_.block) {
    Block block = BlockFrom(first, sizes_.block, factors);
    ExchangeBlock(block, block.first, block.last, meter_);
    ApplyBlock(block, block.first, block.done, 1, block.first - 1, meter_);
    ApplyBlock(block, block.first, block.done, block.last + 1, n_, meter_);
  }
}

void BlockExchanger::RunShared() {
  // So many blocks have their factors at a time.
  constexpr int kKept = 4;
  std::vector<Matrix> factors(kKept, Matrix::Unset(n_, sizes_.block + sizes_.factorGap));
  const std::vector<int> firsts = FirstsOfLanes(n_, sizes_.block, sizes_.panel);
  std::vector<Block> blocks;
  for (std::size_t lane = 0; lane + 1 < firsts.size(); ++lane) {
    blocks.push_back(
        BlockFrom(firsts[lane], firsts[lane + 1] - firsts[lane], factors[lane % kKept]));
  }
  Lanes::Plan plan;
  plan.finished = static_cast<int>(blocks.size());
  plan.most = sizes_.sharedStrip;
  plan.afterwards = Lanes::Finished::kFollow;
  plan.kept = kKept;
  ShareLanes(
      meter_, firsts, plan,
      [&](int step, int from, int to, WorkMeter& meter) { Follow(blocks[step], from, to, meter); },
      [&](int lane, WorkMeter& meter) {
        ExchangeBlock(blocks[lane], blocks[lane].first, blocks[lane].last, meter);
        return result_.complete ? Lanes::Outcome::kGoOn : Lanes::Outcome::kLast;
      });
}

/// So many columns, as far as there are.
Block BlockExchanger::BlockFrom(int first, int columns, Matrix& factors) const {
  return {.first = first,
          .last = std::min(first + columns - 1, n_),
          .done = first - 1,
          .factors = Part(factors, 1, 1, n_, sizes_.block)};
}

/// The columns first..last of a block.
void BlockExchanger::ExchangeBlock(Block& block, int first, int last, WorkMeter& meter) {
  const int columns = last - first + 1;
  if (columns <= sizes_.panel) {
    ExchangePanel(block, first, last, meter);
    return;
  }
  const int panels = (columns + sizes_.panel - 1) / sizes_.panel;
  const int middle = first + panels / 2 * sizes_.panel - 1;
  ExchangeBlock(block, first, middle, meter);
  ApplyBlock(block, first, block.done, middle + 1, last, meter);
  if (!result_.complete) return;
  ExchangeBlock(block, middle + 1, last, meter);
  ApplyBlock(block, middle + 1, block.done, first, middle, meter);
}

/// Columns outside a block do with it what its own columns did.
void BlockExchanger::Follow(const Block& block, int from, int to, WorkMeter& meter) {
  ExchangeRows(W_, block.exchanges, from, to);
  ApplyBlock(block, block.first, block.done, from, to, meter);
}

void BlockExchanger::ExchangePanel(Block& block, int first, int last, WorkMeter& meter) {
  const View place = Part(W_, 1, first, n_, last - first + 1);
  const View panel = panel_.Read(place);
  const View factors = panelFactors_.Empty(panel.rows, n_);
  double largest = LargestMagnitude(&panel(0, first - 1), n_ - first + 1);
  for (int s = 0; s < panel.rows && result_.complete; ++s) {
    result_.complete = ExchangePanelColumn(block, panel, factors, first, s, largest);
  }
  ColumnPanel::Write(panel, place);
  ColumnPanel::Write(factors, block.Factors(1, first, n_, panel.rows));
  meter.Add(1.0 * panel.rows * panel.rows * n_);
}

/// Row s of `panel` holds column first + s of W, and row s of `factors` becomes those of its step.
/// `largest` is the largest magnitude at and below the diagonal, and becomes that of the next
/// column. False where the column has no pivot.
bool BlockExchanger::ExchangePanelColumn(Block& block, const View& panel, const View& factors,
                                         int first, int s, double& largest) {
  const int i = first + s;
  double* const column = &panel(s, 0);
  const int p = PivotRow(i, column, largest);
  if (p == 0) return false;
  if (p != i) {
    TakePivotRow(block, i, p);
    for (int r = 0; r < panel.rows; ++r) std::swap(panel(r, i - 1), panel(r, p - 1));
    for (int r = 0; r < s; ++r) std::swap(factors(r, i - 1), factors(r, p - 1));
    const int earlier = first - block.first;
    SwapNumbers(&block.factors(i - 1, 0), &block.factors(p - 1, 0), earlier);
  }
  const double pivot = column[i - 1];
  NotePivot(pivot);
  block.done = i;
  largest = TakeStep(panel, i, s);
  for (int r = 0; r < panel.rows; ++r) panel(r, i - 1) /= pivot;
  MoveNegated(column, n_, &factors(s, 0));
  column[i - 1] = 1.0 / pivot;
  return true;
}

/// Step i in the panel, whose row s holds its column, in all rows but its own; f takes the place of
/// the column. Returns the largest magnitude below row i in the next column.
double BlockExchanger::TakeStep(const View& panel, int i, int s) {
  PanelStep step;
  step.column = &panel(s, 0);
  step.pivot = panel(s, i - 1);
  step.count = i - 1;
  // The next column first: its numbers are searched on the way.
  for (int r = s + 1; r < s + panel.rows; ++r) {
    const int other = r % panel.rows;
    step.other[step.others] = &panel(other, 0);
    step.multiplier[step.others] = panel(other, i - 1);
    ++step.others;
  }
  TakePanelStep(step);
  step.count = n_ - i;
  step.column += i;
  for (int r = 0; r < step.others; ++r) step.other[r] += i;
  return step.count == 0 ? 0 : TakePanelStep(step);
}

/// Makes the steps of the columns first..last of a block in the columns from..to.
void BlockExchanger::ApplyBlock(const Block& block, int first, int last, int from, int to,
                                WorkMeter& meter) {
  if (from > to || first > last) return;
  const int steps = last - first + 1;
  const int cols = to - from + 1;
  const View U{pivotRows_.Row(from), steps, cols, cols, 1};
  for (int j = 0; j < cols; j += sizes_.strip) {
    const int strip = std::min(sizes_.strip, cols - j);
    TakeStepsInPivotRows(block, first, last, from + j, Part(U, 0, j, steps, strip));
    meter.Add(1.0 * steps * steps * strip);
  }
  SubtractProduct(block.Factors(1, first, first - 1, steps), U, Part(W_, 1, from, first - 1, cols),
                  meter);
  SubtractProduct(block.Factors(last + 1, first, n_ - last, steps), U,
                  Part(W_, last + 1, from, n_ - last, cols), meter);
}

/// The same in the rows first..last alone; U becomes these rows as they are before their division.
void BlockExchanger::TakeStepsInPivotRows(const Block& block, int first, int last, int from,
                                          const View& U) {
  const int panel = sizes_.panel;
  const auto rowsOfU = [&](int i, int rows) { return Part(U, i - first, 0, rows, U.cols); };
  for (int top = first; top <= last; top += panel) {
    const int rows = std::min(panel, last - top + 1);
    const View X = Part(W_, top, from, rows, U.cols);
    SubtractProduct(block.Factors(top, first, rows, top - first), rowsOfU(first, top - first), X);
    ExchangePivotRows(block.Factors(top, top, rows, rows), result_.pivots.From(top), X,
                      rowsOfU(top, rows));
  }
  for (int top = first; top + panel <= last; top += panel) {
    const int next = top + panel;
    SubtractProduct(block.Factors(top, next, panel, last - next + 1),
                    rowsOfU(next, last - next + 1), Part(W_, top, from, panel, U.cols));
  }
}

}  // namespace

JordanExchange ExchangeAllColumns(Matrix& W, EqualPivots rule, WorkMeter& meter,
                                  const ExchangeSizes& sizes) {
  if (W.Rows() > sizes.smallOrder) return BlockExchanger(W, rule, meter, sizes).Run();
  JordanExchange done = Exchanger(W, rule, sizes).TakeStepByStep();
  meter.Add(1.0 * W.Rows() * W.Rows() * W.Rows());
  return done;
}

}  // namespace qmx
