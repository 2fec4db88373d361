// SPDX-License-Identifier: MIT
#pragma once

#include "grids/grid_window.h"

namespace qmx {

/// A window that shows a result. In the full form a click lays the entry box over a cell, so that
/// its whole text can be read and copied; nothing typed there reaches the matrix. Windows of one
/// column have no such box, the plain one not even the toggle.
class ViewerWindow : public GridWindow {
  Q_OBJECT

 public:
  ViewerWindow(CommandRunner& commands, qmx::Slot slot);

 private:
  /// The cell that an arrow leads to, which may lie outside.
  GridCell Neighbour(int key);
  void MoveBy(int key);
  void MoveAndInspect(int key);
};

}  // namespace qmx
