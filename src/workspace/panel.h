// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "workspace/controls.h"
#include "workspace/slot_table.h"

namespace qmx {

/// The controls of the main window.
class Panel {
 public:
  Panel() = default;
  Panel(const Panel&) = delete;
  Panel& operator=(const Panel&) = delete;
  virtual ~Panel() = default;

  /// Text of a field, or caption of a label.
  virtual std::string Text(const Control& control) const = 0;
  virtual void SetText(const Control& control, const std::string& text) = 0;
  virtual void SetEnabled(const Control& control, bool enabled) = 0;
  virtual bool IsEnabled(const Control& control) const = 0;
  /// True if an option or check box is selected.
  virtual bool IsSelected(const Control& control) const = 0;
  /// Selects an option of its group, without running what a click on it would run.
  virtual void Select(const Control& option) = 0;
  virtual void SetFrameVisible(Slot slot, bool visible) = 0;
};

}  // namespace qmx
