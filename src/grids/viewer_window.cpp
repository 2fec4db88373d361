// SPDX-License-Identifier: MIT
#include "grids/viewer_window.h"

namespace qmx {

ViewerWindow::ViewerWindow(CommandRunner& commands, qmx::Slot slot) : GridWindow(commands, slot) {
  const WindowKind kind = InfoOf(slot).kind;
  connect(&Grid(), &MatrixGrid::ArrowPressed, this, &ViewerWindow::MoveBy);
  if (kind == WindowKind::kViewer) {
    AddEntryBox();
    connect(&Grid(), &MatrixGrid::CellChosen, this, &ViewerWindow::OpenEntryBox);
    connect(Box(), &EntryBox::ArrowPressed, this, &ViewerWindow::MoveAndInspect);
  }
  if (kind != WindowKind::kPlainViewer) AddToggle();
}

GridCell ViewerWindow::Neighbour(int key) {
  const int down = (key == Qt::Key_Down) - (key == Qt::Key_Up);
  const int right = (key == Qt::Key_Right) - (key == Qt::Key_Left);
  return {Grid().Row() + down, Grid().Col() + right};
}

void ViewerWindow::MoveBy(int key) {
  const GridCell cell = Neighbour(key);
  Grid().SetCurrentCell(cell.row, cell.col);
}

void ViewerWindow::MoveAndInspect(int key) {
  const GridCell cell = Neighbour(key);
  Grid().SetCellToCover(cell.row, cell.col);
  OpenEntryBox();
}

}  // namespace qmx
