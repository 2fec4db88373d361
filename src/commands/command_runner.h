// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "base/fault.h"
#include "base/function_ref.h"
#include "commands/grid_commands.h"
#include "commands/history.h"
#include "workspace/context.h"

namespace qmx {

/// The one way by which windows run commands. Nothing that a command throws gets further than this:
/// the windows' toolkit cannot bear it. A fault leads to the fault handler; one for lack of memory
/// leaves the Workspace as it was before the command. Commands that change something become steps
/// that can be taken back. While a command runs, others do nothing.
class CommandRunner {
 public:
  using Command = FunctionRef<void(Context&)>;
  using FaultHandler = std::function<void(Fault)>;
  using Listener = std::function<void()>;

  /// `context` may still be under construction.
  CommandRunner(Context& context, FaultHandler onFault)
      : context_(context), onFault_(std::move(onFault)) {}

  /// Runs a command that changes the Workspace, as the step of this name: "Clear of matrix B".
  void Step(const std::string& name, Command command);
  /// Runs a command that is no step: it changes nothing that a project holds.
  void Do(Command command);
  /// Writes one cell: text by text a single step until EndCell.
  void WriteCell(Slot slot, int row, int col, const std::string& text);
  /// Whatever is written next is a step of its own.
  void EndCell() { openCell_.reset(); }
  /// Pastes a block; nothing after a refusal.
  std::optional<CellRange> Paste(Slot slot, int row, int col, const std::string& text);

  /// True while the texts of a cell are one step.
  bool HasOpenCell() const { return openCell_.has_value(); }

  void Undo();
  void Redo();
  /// What a project saved now would hold, without its bytes: two marks are the same where it is.
  struct Mark {
    std::uint64_t position = 0;
    FiledSettings settings;
    bool operator==(const Mark&) const = default;
  };
  Mark PresentMark() const { return {history_.Position(), FiledSettingsOf(context_)}; }
  /// The present state is what a file holds: to be called by the command that wrote or read it.
  void MarkSaved() { savedNow_ = true; }
  /// True if the command that ran last wrote or read the project's file.
  bool WasSaved() const { return savedNow_; }
  /// True if a step leads from what was saved to the present state, or settings have changed.
  bool IsChanged() const { return PresentMark() != saved_; }
  const History& Steps() const { return history_; }
  /// True while a command runs.
  bool IsBusy() const { return busy_; }
  /// Tells the user that nothing can be changed while a command runs.
  void Refuse();

  /// Is told after every command.
  void SetListener(Listener listener) { listener_ = std::move(listener); }

 private:
  /// Runs a part of a command, as the only one; false after a fault, once its handler returns.
  /// Keeps a step; without memory for it there are none to take back.
  template <typename Before>
  void Keep(const std::string& name, Before before);
  bool Guard(FunctionRef<void()> part);
  std::optional<Fault> FaultOf(FunctionRef<void()> part);

  Context& context_;
  FaultHandler onFault_;
  Listener listener_;
  History history_;
  Mark saved_;  ///< Of the state that a file holds.
  bool savedNow_ = false;
  bool busy_ = false;
  /// The cell whose texts belong to the step made last.
  struct OpenCell {
    Slot slot;
    int row;
    int col;
    bool operator==(const OpenCell&) const = default;
  };
  std::optional<OpenCell> openCell_;
};

}  // namespace qmx
