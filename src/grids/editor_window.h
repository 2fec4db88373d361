// SPDX-License-Identifier: MIT
#pragma once

#include "grids/entry_line.h"
#include "grids/grid_window.h"

namespace qmx {

/// A window whose matrix is typed in. A click, an arrow or a character typed on the grid lays the
/// entry box over the current cell; every change of its text is at once the cell's text and the
/// element's value. A block of numbers is pasted as if it were typed cell by cell.
class EditorWindow : public GridWindow {
  Q_OBJECT

 public:
  EditorWindow(CommandRunner& commands, qmx::Slot slot);

 Q_SIGNALS:
  /// A file of this computer, the first of several, was dropped on the window.
  void FileDropped(const QString& name);

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  /// True, and the user told so, while nothing can be changed.
  bool IsHeldOff();
  void AddEntryLine();
  /// Brings the lower line in line with the current element.
  void ShowElement();
  void ShowRefusal(const QString& key);
  void StartEditing();
  void StartTyping(const QString& character);
  void Commit(const QString& text);
  void MoveAndEdit(int key);
  void PasteIntoCells() override;
  void PasteIntoBox() override;

  EntryLine* line_ = nullptr;
};

}  // namespace qmx
