// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands/parameters.h"
#include "workspace/context.h"

namespace qmx {

/// The Workspace and all that the windows show of it, at some time. Elements are shared with the
/// Workspace until one of the two is written.
struct State {
  Workspace workspace;
  std::shared_ptr<const ViewState> view;
};

/// The present state.
State CaptureState(const Context& context);
/// Makes a state the present one. Does not fail once it has begun to change the Workspace.
void RestoreState(Context& context, const State& state, View::Restoring restoring);
/// True if a project saved from one or the other would differ, or what the user sees of them.
bool Differ(const Workspace& one, const Workspace& two);

/// A block of an editor's cells: its elements and what the grid shows there, and what else may have
/// changed without being a step.
struct CellsState {
  Slot slot = kSlotA;
  int row = 0;
  int col = 0;
  Matrix values;
  Revisions revisions;
  ProjectSettings settings;
  std::optional<std::string> text;        ///< Of a single cell,
  std::shared_ptr<const ViewState> grid;  ///< or of the grid that a larger block lies in.
};

/// The present state of a block of cells of an editor's matrix.
CellsState CaptureCells(const Context& context, Slot slot, int row, int col, int rows, int cols);
void RestoreCells(Context& context, const CellsState& cells);

/// Steps that can be taken back, and steps taken back that can be done again. Each is kept as the
/// state on its other side. The oldest are dropped where all together hold more memory than they
/// may.
class History {
 public:
  static constexpr std::size_t kMostBytes = std::size_t{256} << 20;

  explicit History(std::size_t mostBytes = kMostBytes) : mostBytes_(mostBytes) {}

  /// A step was made from these states to the present one.
  void Push(const Context& context, std::string name, State before);
  void Push(const Context& context, std::string name, CellsState before);
  /// Takes the last step back, or does the last one taken back again. Nothing where there is none.
  void Undo(Context& context);
  void Redo(Context& context);

  /// The names of the steps that would be next; empty where there is none.
  std::string UndoName() const { return undo_.empty() ? std::string() : undo_.back().name; }
  std::string RedoName() const { return redo_.empty() ? std::string() : redo_.back().name; }
  /// A number that tells where in the history the present state stands: the same one whenever that
  /// is reached again.
  std::uint64_t Position() const { return undo_.empty() ? start_ : undo_.back().number; }
  std::size_t UndoCount() const { return undo_.size(); }
  /// Bytes that the steps hold beyond what the Workspace itself holds.
  std::size_t Bytes() const { return bytes_; }
  void Clear();

 private:
  struct Step {
    std::string name;
    std::optional<State> state;  ///< One of these two.
    std::optional<CellsState> cells;
    std::size_t bytes = 0;
    std::uint64_t number = 0;  ///< Of its own.
  };

  void Add(const Context& context, Step step);
  void DropOldest();
  static void Exchange(Context& context, Step& step);
  static std::size_t BytesOf(const Step& step, const Workspace& present);
  void Move(Context& context, std::deque<Step>& from, std::deque<Step>& to);

  std::size_t mostBytes_;
  std::deque<Step> undo_;
  std::deque<Step> redo_;
  std::size_t bytes_ = 0;
  std::uint64_t start_ = 0;   ///< The position before the oldest step that is left.
  std::uint64_t latest_ = 0;  ///< The number given last.
};

}  // namespace qmx
