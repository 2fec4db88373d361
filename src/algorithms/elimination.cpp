// SPDX-License-Identifier: MIT
#include "algorithms/elimination.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>
#include <vector>

#include "algorithms/elimination_steps.h"
#include "algorithms/ordered_product.h"
#include "algorithms/pivot_search.h"
#include "algorithms/shared_work.h"
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
// Where a team shares the work, nobody waits for a step to be taken everywhere. The blocks are
// lanes that take the steps of those before them one by one; a block is eliminated as soon as it
// has taken all of them, while others are still behind:
//
//          done    done    next
//         +-------+-------+-------+-------+---     Whoever has nothing to do gives `next` what it
//         |   0   |   1   |   2   |   3   | ...    lacks and eliminates it, or takes lanes that are
//         +-------+-------+-------+-------+---     furthest back through one step more: exchanges,
//  has taken                 0, 1     0            pivot rows and A22.
//
// A block that is done has only the exchanges of later ones to make. Until all have taken its own
// step it leaves its rows where they are, because its factors belong to the rows of that step.
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
Elimination EliminateStepByStep(Matrix& W, int cols, int columns, PivotRule rule, double* order) {
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
      for (int j = 0; j < cols; ++j) std::swap(row[j], row[p * n + j]);
    }
    if (below > 0) EliminateRows(pivot, pivot + n, n, below, 0, cols - i - 1);
  }
  return result;
}

/// Columns whose steps the rest of the matrix takes all at once.
struct Block {
  int first = 1;
  int last = 0;
  bool missesPivot = false;            ///< Whether a column had none.
  std::vector<RowExchange> exchanges;  ///< Which other columns have not made yet.
};

class Eliminator {
 public:
  /// With `whileLargest` only while each diagonal element is a pivot, and none below is larger.
  Eliminator(Matrix& W, int cols, PivotRule rule, double* order, WorkMeter& meter,
             const EliminationSizes& sizes, bool whileLargest = false)
      : W_(W),
        cols_(cols),
        rule_(rule),
        whileLargest_(whileLargest),
        order_(order),
        meter_(meter),
        sizes_(sizes),
        eliminated_(cols),
        panel_(W.Rows()) {}

  /// The columns first..last, once those before are eliminated.
  Elimination Run(int first, int last);
  /// The column that it ended at before the last, if it did.
  int End() const { return end_; }

 private:
  void RunAlone(int start, int columns);
  void RunShared(int start, int columns);
  void EliminateBlock(Block& block, int right, WorkMeter& meter);
  void EliminatePanel(Block& block, int first, int last, WorkMeter& meter);
  bool EliminatePanelColumn(Block& block, const View& panel, int first, int j, double& largest);
  void TakeStepsInRows(const Block& block, int top, int bottom, int from, int to, WorkMeter& meter);
  void TakeSteps(const Block& block, int first, int last, int top, int bottom, int from, int to,
                 WorkMeter& meter);
  void Follow(const Block& block, int from, int to, WorkMeter& meter);

  Matrix& W_;
  const int cols_;  ///< Of the matrix; W_ may have some behind.
  const PivotRule rule_;
  const bool whileLargest_;
  double* const order_;
  WorkMeter& meter_;
  const EliminationSizes& sizes_;
  bool shared_ = false;      ///< A block exchanges its own columns alone; the others follow.
  Vector<char> eliminated_;  ///< For each column, whether it had a pivot.
  ColumnPanel panel_;
  Elimination result_;
  int end_ = 0;
};

Elimination Eliminator::Run(int first, int last) {
  if (last - first + 1 < sizes_.shareFrom) {
    RunAlone(first, last);
    return result_;
  }
  const Attempt attempt(
      SharedTeam(), kEliminationName,
      EliminationWork(W_.Rows() - first + 1, cols_ - first + 1, last - first + 1));
  shared_ = attempt.IsShared();
  if (shared_) {
    RunShared(first, last);
  } else {
    RunAlone(first, last);
  }
  return result_;
}

void Eliminator::RunAlone(int start, int columns) {
  for (int first = start; first <= columns && result_.complete; first += sizes_.block) {
    Block block{first, std::min(first + sizes_.block - 1, columns), false, {}};
    const int last = block.last;
    // There is no other block for what stands right of the last one.
    const int right = last == columns ? cols_ : last;
    EliminateBlock(block, right, meter_);
    for (int from = right + 1; from <= cols_; from += sizes_.strip) {
      const int to = std::min(from + sizes_.strip - 1, cols_);
      TakeStepsInRows(block, first, last, from, to, meter_);
    }
    TakeSteps(block, first, last, last + 1, W_.Rows(), last + 1, cols_, meter_);
  }
}

void Eliminator::RunShared(int start, int columns) {
  const int before = start - 1;
  std::vector<int> firsts = FirstsOfLanes(columns - before, sizes_.block, sizes_.panel);
  for (int& first : firsts) first += before;
  std::vector<Block> blocks;
  for (std::size_t lane = 0; lane + 1 < firsts.size(); ++lane) {
    blocks.push_back({firsts[lane], firsts[lane + 1] - 1, false, {}});
  }
  // What stands right of the last block only takes steps.
  while (firsts.back() <= cols_) {
    firsts.push_back(std::min(firsts.back() + sizes_.block, cols_ + 1));
  }
  Lanes::Plan plan;
  plan.finished = static_cast<int>(blocks.size());
  plan.most = sizes_.sharedStrip;
  plan.afterwards = Lanes::Finished::kFollowLater;
  ShareLanes(
      meter_, firsts, plan,
      [&](int step, int from, int to, WorkMeter& meter) { Follow(blocks[step], from, to, meter); },
      [&](int lane, WorkMeter& meter) {
        EliminateBlock(blocks[lane], blocks[lane].last, meter);
        return result_.complete ? Lanes::Outcome::kGoOn : Lanes::Outcome::kLast;
      });
}

/// Leaves the columns up to `right` in the rows first..last as they are in the end.
void Eliminator::EliminateBlock(Block& block, int right, WorkMeter& meter) {
  const int rows = W_.Rows();
  const int first = block.first;
  const int last = block.last;
  for (int left = first; left <= last; left += sizes_.panel) {
    const int end = std::min(left + sizes_.panel - 1, last);
    TakeSteps(block, first, left - 1, left, rows, left, end, meter);
    EliminatePanel(block, left, end, meter);
    TakeStepsInRows(block, left, end, end + 1, right, meter);
    if (!result_.complete) {
      // What is below has been waiting for panels that do not come any more.
      TakeSteps(block, first, end, end + 1, rows, end + 1, last, meter);
      TakeSteps(block, first, end, end + 1, last, last + 1, right, meter);
      return;
    }
  }
}

void Eliminator::EliminatePanel(Block& block, int first, int last, WorkMeter& meter) {
  const View place = Part(W_, first, first, W_.Rows() - first + 1, last - first + 1);
  const View panel = panel_.Read(place);
  double largest = LargestMagnitude(panel.first, panel.cols);
  for (int j = 0; j < panel.rows && result_.complete; ++j) {
    eliminated_(first + j) = EliminatePanelColumn(block, panel, first, j, largest);
    block.missesPivot = block.missesPivot || eliminated_(first + j) == 0;
  }
  ColumnPanel::Write(panel, place);
  meter.Add(0.5 * panel.rows * panel.rows * panel.cols);
}

/// Row j of `panel` holds column first + j of W from row `first` on; its diagonal element is
/// panel(j, j). `largest` is the largest magnitude at and below it, and becomes that of the next
/// column. False where the column has no pivot.
bool Eliminator::EliminatePanelColumn(Block& block, const View& panel, int first, int j,
                                      double& largest) {
  double* const column = &panel(j, j);
  const int below = panel.cols - j - 1;
  const int p =
      rule_ == PivotRule::kDiagonalElement ? 0 : PlaceOfLargest(largest, column, below + 1);
  const int later = panel.rows - j - 1;
  const bool ends = whileLargest_ && (column[0] == 0 || largest > std::abs(column[0]));
  if (column[p] == 0 || ends) {
    result_.complete = !ends && !EndsAtZero(rule_, below, [column](int k) { return column[k]; });
    if (!result_.complete) end_ = first + j;
    if (later > 0) largest = LargestMagnitude(&panel(j + 1, j + 1), below);
    return false;
  }
  if (p != 0) {
    for (int r = 0; r < panel.rows; ++r) std::swap(panel(r, j), panel(r, j + p));
    const int row = first + j;
    if (shared_) {
      block.exchanges.push_back({row, row + p});
      ExchangeRows(W_, {&block.exchanges.back(), 1}, block.first, block.last);
    } else {
      SwapNumbers(W_.Row(row), W_.Row(row + p), cols_);
    }
    if (order_ != nullptr) std::swap(order_[row - 1], order_[row + p - 1]);
    ++result_.exchanges;
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

/// The rows top..bottom take the steps of the block's rows above their own in the columns from..to.
void Eliminator::TakeStepsInRows(const Block& block, int top, int bottom, int from, int to,
                                 WorkMeter& meter) {
  if (from > to) return;
  for (; top <= bottom; top += sizes_.panel) {
    const int end = std::min(top + sizes_.panel - 1, bottom);
    TakeSteps(block, block.first, top - 1, top, end, from, to, meter);
    if (block.missesPivot) {
      for (int i = top + 1; i <= end; ++i) TakeSteps(block, top, i - 1, i, i, from, to, meter);
    } else {
      const int rows = end - top + 1;
      EliminatePivotRows(Part(W_, top, top, rows, rows), Part(W_, top, from, rows, to - from + 1));
      meter.Add(0.5 * rows * rows * (to - from + 1));
    }
  }
}

/// Takes the steps of the block's columns first..last, all that had a pivot, in the rows
/// top..bottom of the columns from..to.
void Eliminator::TakeSteps(const Block& block, int first, int last, int top, int bottom, int from,
                           int to, WorkMeter& meter) {
  if (top > bottom || from > to) return;
  for (int run = first; run <= last;) {
    int end = block.missesPivot ? run : last + 1;  // One behind.
    while (end <= last && eliminated_(end) != 0) ++end;
    if (end > run) {
      SubtractProduct(Part(W_, top, run, bottom - top + 1, end - run),
                      Part(W_, run, from, end - run, to - from + 1),
                      Part(W_, top, from, bottom - top + 1, to - from + 1), meter);
    }
    run = end + 1;
  }
}

/// Other columns do with a block what its own columns did; those before it only its exchanges.
void Eliminator::Follow(const Block& block, int from, int to, WorkMeter& meter) {
  ExchangeRows(W_, block.exchanges, from, to);
  if (to < block.first) return;
  for (int left = from; left <= to; left += sizes_.strip) {
    const int right = std::min(left + sizes_.strip - 1, to);
    TakeStepsInRows(block, block.first, block.last, left, right, meter);
  }
  TakeSteps(block, block.first, block.last, block.last + 1, W_.Rows(), from, to, meter);
}

}  // namespace

Elimination Eliminate(Matrix& W, int columns, PivotRule rule, WorkMeter& meter, double* order,
                      const EliminationSizes& sizes, int gap) {
  if (columns < 1 && order == nullptr) return {};
  const int cols = W.Cols() - gap;
  if (order != nullptr) std::iota(order, order + W.Rows(), 1.0);
  if (std::max(W.Rows(), cols) <= sizes.smallOrder) {
    const Elimination done = EliminateStepByStep(W, cols, columns, rule, order);
    meter.Add(EliminationWork(W.Rows(), cols, columns));
    return done;
  }
  return Eliminator(W, cols, rule, order, meter, sizes).Run(1, columns);
}

int EliminateWhileLargest(Matrix& W, int first, int last, WorkMeter& meter,
                          const EliminationSizes& sizes) {
  Eliminator eliminator(W, W.Rows(), PivotRule::kDiagonalElement, nullptr, meter, sizes, true);
  return eliminator.Run(first, last).complete ? last + 1 : eliminator.End();
}

double ReduceToDeterminant(Matrix& W, WorkMeter& meter, const EliminationSizes& sizes) {
  const int n = W.Rows();
  const Elimination done =
      Eliminate(W, n - 1, PivotRule::kStopAtZeroColumn, meter, nullptr, sizes, W.Cols() - n);
  double product = 1.0;
  for (int k = 1; k <= n; ++k) product *= W(k, k);
  return AlternatingSign(done.exchanges) * product;
}

void RefuseElement() {
  CheckArithmetic();
  throw RuntimeFault(Fault::kSubscriptOutOfRange);
}

}  // namespace qmx
