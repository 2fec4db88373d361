// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "base/matrix.h"
#include "workspace/slot_table.h"

namespace qmx {

/// All that the windows showed at some time, in the form of whoever shows it.
class ViewState {
 public:
  ViewState() = default;
  ViewState(const ViewState&) = delete;
  ViewState& operator=(const ViewState&) = delete;
  virtual ~ViewState() = default;
};

/// The windows as a whole: what they show can be kept and brought back.
class View {
 public:
  View() = default;
  View(const View&) = delete;
  View& operator=(const View&) = delete;
  virtual ~View() = default;

  virtual std::shared_ptr<const ViewState> Capture() const = 0;
  enum class Restoring {
    kContents,    ///< Windows that are there both times stay as they are; the results list stays.
    kEverything,  ///< Which windows are shown and the lines of the results list go back as well.
  };
  virtual void Restore(const ViewState& state, Restoring restoring) = 0;

  /// The same for one grid alone.
  virtual std::shared_ptr<const ViewState> CaptureGrid(Slot slot) const = 0;
  virtual void RestoreGrid(Slot slot, const ViewState& state) = 0;
  /// What was written into a cell; nothing where it shows its element or is empty.
  virtual std::optional<std::string> WrittenText(Slot slot, int row, int col) const = 0;
  virtual void RestoreText(Slot slot, int row, int col, const std::optional<std::string>& text) = 0;
  /// Cells of a grid without a written text show these elements from now on, which have the shape
  /// of those before.
  virtual void ShowElements(Slot slot, const Matrix& elements) = 0;

  /// Tells the user something in the status bar, for as long as nothing else is told.
  virtual void SetStatus(const std::string& text) = 0;
};

}  // namespace qmx
