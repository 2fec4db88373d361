// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "workspace/slot_table.h"

namespace qmx {

/// The windows. One of a matrix that does not exist yet is created, hidden, by whatever refers to
/// it.
class Windows {
 public:
  Windows() = default;
  Windows(const Windows&) = delete;
  Windows& operator=(const Windows&) = delete;
  virtual ~Windows() = default;

  /// Shows a window, not minimised, and leaves the keyboard where it is unless the window waits for
  /// typing.
  virtual void ShowWindow(Slot slot) = 0;
  /// Shows a window in its normal, not minimised, state.
  virtual void RestoreWindow(Slot slot) = 0;
  /// Unloads a window; nothing where there is none.
  virtual void CloseWindow(Slot slot) = 0;
  /// Hides the cell entry box of an editor or viewer.
  virtual void HideEntryBox(Slot slot) = 0;
  virtual void BringMainToFront() = 0;
  /// Lets windows that were just shown paint themselves; no key or click is handled meanwhile.
  virtual void LetWindowsPaint() = 0;
};

/// The results list: a running log in a window of its own.
class Log {
 public:
  Log() = default;
  Log(const Log&) = delete;
  Log& operator=(const Log&) = delete;
  virtual ~Log() = default;

  /// Appends lines, in the fixed-pitch font that their columns need.
  virtual void Append(const std::vector<std::string>& lines) = 0;
  /// Shows its window in its normal state.
  virtual void ShowResults() = 0;
  virtual void Beep() = 0;
};

}  // namespace qmx
