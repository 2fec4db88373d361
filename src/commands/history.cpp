// SPDX-License-Identifier: MIT
#include "commands/history.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "workspace/computation.h"
#include "workspace/result_table.h"

namespace qmx {
namespace {

/// What a step takes beside the elements of its matrices, about.
constexpr std::size_t kStepBytes = 4096;

/// All matrices that a Workspace holds.
template <typename Action>
void ForEachMatrix(const Workspace& workspace, Action action) {
  for (const SlotData& data : workspace.slots) action(data.array);
  const auto ofFactors = [&action](const StoredFactors& factors) {
    action(factors.L);
    action(factors.U);
    action(factors.exchanges);
  };
  ofFactors(workspace.storedFactors);
  for (const auto& computation : workspace.computations) {
    if (computation == nullptr) continue;
    for (const Matrix& computed : computation->computed) action(computed);
    action(computation->before);
    ofFactors(computation->factors);
  }
}

bool Same(const SlotData& one, const SlotData& two) {
  return one.rows == two.rows && one.cols == two.cols && one.array.SharesWith(two.array);
}

bool Same(const StoredFactors& one, const StoredFactors& two) {
  return one.L.SharesWith(two.L) && one.U.SharesWith(two.U) &&
         one.exchanges.SharesWith(two.exchanges) && one.lRows == two.lRows &&
         one.lCols == two.lCols && one.uRows == two.uRows && one.uCols == two.uCols &&
         one.exchangeRows == two.exchangeRows && one.exchangeCols == two.exchangeCols;
}

bool Same(const EigenState& one, const EigenState& two) {
  return one.EigenOrigin == two.EigenOrigin && one.VectorStatus == two.VectorStatus &&
         one.EigenCount == two.EigenCount && one.ConvergedCount == two.ConvergedCount &&
         one.ShiftIndex == two.ShiftIndex;
}

}  // namespace

State CaptureState(const Context& context) { return {context.workspace, context.view.Capture()}; }

void RestoreState(Context& context, const State& state, View::Restoring restoring) {
  Workspace workspace = state.workspace;
  context.workspace = std::move(workspace);
  context.view.Restore(*state.view, restoring);
}

bool Differ(const Workspace& one, const Workspace& two) {
  for (const Slot slot : kAllSlots) {
    if (!Same(one.At(slot), two.At(slot))) return true;
  }
  return FlagsOf(one) != FlagsOf(two) || one.AIsSymmetric != two.AIsSymmetric ||
         one.StoredFactorsValid != two.StoredFactorsValid || one.determinant != two.determinant ||
         one.trace != two.trace || one.definitenessText != two.definitenessText ||
         one.symmetryText != two.symmetryText || one.SystemMethod != two.SystemMethod ||
         !Same(one.storedFactors, two.storedFactors) || !Same(one.eigen, two.eigen);
}

CellsState CaptureCells(const Context& context, Slot slot, int row, int col, int rows, int cols) {
  const Matrix& array = context.workspace.At(slot).array;
  CellsState cells{
      slot, row, col, Matrix(rows, cols), context.workspace.revisions, ReadSettings(context),
      {},   {}};
  for (int i = 1; i <= rows; ++i)
    std::copy_n(array.Row(row + i - 1) + col - 1, cols, cells.values.Row(i));
  if (rows == 1 && cols == 1) {
    cells.text = context.view.WrittenText(slot, row, col);
  } else {
    cells.grid = context.view.CaptureGrid(slot);
  }
  return cells;
}

void RestoreCells(Context& context, const CellsState& cells) {
  Matrix& array = context.workspace.At(cells.slot).array;
  array.MakeOwn();
  RestoreSettings(context, cells.settings);
  context.workspace.revisions = cells.revisions;
  for (int i = 1; i <= cells.values.Rows(); ++i) {
    std::copy_n(cells.values.Row(i), cells.values.Cols(),
                array.Row(cells.row + i - 1) + cells.col - 1);
  }
  if (cells.grid != nullptr) {
    context.view.RestoreGrid(cells.slot, *cells.grid);
  } else {
    context.view.RestoreText(cells.slot, cells.row, cells.col, cells.text);
  }
  // What the grid shows below may be the elements of another state.
  context.view.ShowElements(cells.slot, array);
}

void History::Push(const Context& context, std::string name, State before) {
  Add(context, {std::move(name), std::move(before), {}});
}

void History::Push(const Context& context, std::string name, CellsState before) {
  Add(context, {std::move(name), {}, std::move(before)});
}

void History::Add(const Context& context, Step step) {
  step.bytes = BytesOf(step, context.workspace);
  for (const Step& undone : redo_) bytes_ -= undone.bytes;
  redo_.clear();
  bytes_ += step.bytes;
  step.number = ++latest_;
  undo_.push_back(std::move(step));
  DropOldest();
}

void History::DropOldest() {
  while (bytes_ > mostBytes_ && !undo_.empty()) {
    bytes_ -= undo_.front().bytes;
    start_ = undo_.front().number;
    undo_.pop_front();
  }
}

std::size_t History::BytesOf(const Step& step, const Workspace& present) {
  if (step.cells) return kStepBytes / 16 + step.cells->values.Bytes();
  std::size_t bytes = kStepBytes;
  std::vector<const Matrix*> known;
  const auto isNew = [&known](const Matrix& matrix) {
    return std::none_of(known.begin(), known.end(),
                        [&](const Matrix* other) { return matrix.SharesWith(*other); });
  };
  ForEachMatrix(present, [&](const Matrix& matrix) { known.push_back(&matrix); });
  // A slot and the computation that filled it share their elements.
  ForEachMatrix(step.state->workspace, [&](const Matrix& kept) {
    if (!isNew(kept)) return;
    bytes += kept.Bytes();
    known.push_back(&kept);
  });
  return bytes;
}

void History::Exchange(Context& context, Step& step) {
  if (step.cells) {
    const Matrix& values = step.cells->values;
    CellsState now = CaptureCells(context, step.cells->slot, step.cells->row, step.cells->col,
                                  values.Rows(), values.Cols());
    RestoreCells(context, *step.cells);
    step.cells = std::move(now);
  } else {
    State now = CaptureState(context);
    RestoreState(context, *step.state, View::Restoring::kContents);
    step.state = std::move(now);
  }
}

void History::Move(Context& context, std::deque<Step>& from, std::deque<Step>& to) {
  if (from.empty()) return;
  to.push_back(std::move(from.back()));
  from.pop_back();
  Step& step = to.back();
  Exchange(context, step);
  bytes_ -= step.bytes;
  step.bytes = BytesOf(step, context.workspace);
  bytes_ += step.bytes;
}

void History::Undo(Context& context) { Move(context, undo_, redo_); }

void History::Redo(Context& context) {
  Move(context, redo_, undo_);
  DropOldest();
}

void History::Clear() {
  start_ = ++latest_;
  undo_.clear();
  redo_.clear();
  bytes_ = 0;
}

}  // namespace qmx
