// SPDX-License-Identifier: MIT
#include "commands/command_runner.h"

#include <new>
#include <utility>

#include "commands/stopped_text.h"
#include "workspace/work.h"

namespace qmx {
namespace {

std::string CellName(Slot slot, int row, int col) {
  return std::string(InfoOf(slot).prefix) + std::to_string(row) + "," + std::to_string(col) + ")";
}

}  // namespace

void CommandRunner::Refuse() {
  FaultOf([&] { context_.view.SetStatus(kBusy); });
}

std::optional<Fault> CommandRunner::FaultOf(FunctionRef<void()> part) {
  try {
    part();
  } catch (const RuntimeFault& fault) {
    return fault.Number();
  } catch (const std::bad_alloc&) {
    return Fault::kOutOfMemory;
  }
  return std::nullopt;
}

template <typename Before>
void CommandRunner::Keep(const std::string& name, Before before) {
  try {
    history_.Push(context_, name, std::move(before));
  } catch (const std::bad_alloc&) {
    history_.Clear();
  }
}

bool CommandRunner::Guard(FunctionRef<void()> part) {
  if (busy_) {
    Refuse();
    return false;
  }
  busy_ = true;
  savedNow_ = false;
  context_.workspace.computedNow = {};
  std::optional<Fault> fault = FaultOf([&] {
    context_.view.SetStatus({});
    part();
  });
  busy_ = false;
  if (savedNow_ && !fault) fault = FaultOf([this] { saved_ = PresentMark(); });
  if (!fault && listener_) fault = FaultOf([this] { listener_(); });
  if (fault) onFault_(*fault);
  return !fault;
}

void CommandRunner::Step(const std::string& name, Command command) {
  Guard([&] {
    EndCell();
    State before = CaptureState(context_);
    try {
      command(context_);
      if (Differ(before.workspace, context_.workspace)) Keep(name, std::move(before));
    } catch (const Stopped&) {
      RestoreState(context_, before, View::Restoring::kEverything);
      context_.view.SetStatus(StoppedText(name));
    } catch (const std::bad_alloc&) {
      context_.workspace = std::move(before.workspace);
      throw;
    } catch (const RuntimeFault& fault) {
      if (fault.Number() == Fault::kOutOfMemory) context_.workspace = std::move(before.workspace);
      throw;
    }
  });
}

void CommandRunner::Do(Command command) {
  Guard([&] {
    EndCell();
    try {
      command(context_);
    } catch (const Stopped&) {
      context_.view.SetStatus("Stopped.");
    }
  });
}

void CommandRunner::WriteCell(Slot slot, int row, int col, const std::string& text) {
  Guard([&] {
    if (!context_.workspace.At(slot).array.Contains(row, col)) return;
    const OpenCell cell{slot, row, col};
    if (openCell_ == cell) return CommitCell(context_, slot, row, col, text);
    const std::string name = CellName(slot, row, col);
    CellsState before = CaptureCells(context_, slot, row, col, 1, 1);
    CommitCell(context_, slot, row, col, text);
    openCell_ = cell;
    Keep(name, std::move(before));
  });
}

std::optional<CellRange> CommandRunner::Paste(Slot slot, int row, int col,
                                              const std::string& text) {
  std::optional<CellRange> pasted;
  Guard([&] {
    EndCell();
    const std::string name = "paste into " + std::string(InfoOf(slot).title);
    CellsState before;
    pasted = PasteBlock(context_, slot, row, col, text, [&](const CellRange& cells) {
      before =
          CaptureCells(context_, slot, row, col, cells.lastRow - row + 1, cells.lastCol - col + 1);
    });
    if (pasted) Keep(name, std::move(before));
  });
  return pasted;
}

void CommandRunner::Undo() {
  EndCell();
  Guard([&] { history_.Undo(context_); });
}

void CommandRunner::Redo() {
  EndCell();
  Guard([&] { history_.Redo(context_); });
}

}  // namespace qmx
