// SPDX-License-Identifier: MIT
#include "grids/editor_window.h"

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <algorithm>

#include "commands/block_text.h"
#include "commands/entry_advice.h"
#include "commands/grid_commands.h"
#include "commands/kept_note.h"
#include "grids/dropped_file.h"

namespace qmx {

EditorWindow::EditorWindow(CommandRunner& commands, qmx::Slot slot) : GridWindow(commands, slot) {
  AddEntryBox();
  AddToggle();
  AddPaste();
  setAcceptDrops(true);
  if (slot == kSlotSystem) Grid().SetLastColumnApart();
  connect(&Grid(), &MatrixGrid::CellChosen, this, &EditorWindow::StartEditing);
  connect(&Grid(), &MatrixGrid::ArrowPressed, this, &EditorWindow::MoveAndEdit);
  connect(&Grid(), &MatrixGrid::CharacterTyped, this, &EditorWindow::StartTyping);
  connect(Box(), &EntryBox::ArrowPressed, this, &EditorWindow::MoveAndEdit);
  connect(Box(), &EntryBox::textChanged, this, &EditorWindow::Commit);
  AddEntryLine();
}

void EditorWindow::AddEntryLine() {
  line_ = new EntryLine(this);
  AddBelow(line_);
  connect(Box(), &EntryBox::KeyRefused, this, &EditorWindow::ShowRefusal);
  connect(Grid().selectionModel(), &QItemSelectionModel::currentChanged, this,
          &EditorWindow::ShowElement);
  connect(&Grid().Model(), &QAbstractItemModel::dataChanged, this, &EditorWindow::ShowElement);
  connect(&Grid().Model(), &QAbstractItemModel::modelReset, this, &EditorWindow::ShowElement);
}

void EditorWindow::ShowElement() {
  if (!Grid().HasCurrentCell()) {
    line_->clear();
    return;
  }
  const int row = Grid().Row();
  const int col = Grid().Col();
  const std::string text = Grid().TextMatrix(row, col).toStdString();
  std::string note = text.empty() ? std::string() : WhyReadInPart(text);
  if (note.empty()) note = KeptNote(text);
  line_->ShowElement(
      QString::fromStdString(ElementLine(Slot(), row, col, Grid().Model().Value(row, col))),
      QString::fromStdString(note));
}

void EditorWindow::ShowRefusal(const QString& key) {
  line_->ShowRefusal(QString::fromStdString(KeyRefusal(key.toStdString())));
}

void EditorWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) event->acceptProposedAction();
}

void EditorWindow::dropEvent(QDropEvent* event) {
  const QString name = DroppedFile(*event);
  if (name.isEmpty()) return;
  event->acceptProposedAction();
  Q_EMIT FileDropped(name);
}

bool EditorWindow::IsHeldOff() {
  if (Commands().IsBusy()) Commands().Refuse();
  return Commands().IsBusy();
}

void EditorWindow::StartEditing() {
  if (!IsHeldOff()) OpenEntryBox();
}

void EditorWindow::StartTyping(const QString& character) {
  if (!IsAcceptedInCell(character.front())) {
    ShowRefusal(character);
    return;
  }
  if (IsHeldOff()) return;
  StartEditing();
  FillEntryBox(character.front());
  Commit(character.front());
}

void EditorWindow::Commit(const QString& text) {
  if (Box()->isHidden()) return;
  ShowToolTip(text);
  Commands().WriteCell(Slot(), Grid().Row(), Grid().Col(), text.toStdString());
}

void EditorWindow::MoveAndEdit(int key) {
  const int rows = Grid().Model().DataRows();
  const int cols = Grid().Model().DataCols();
  if (rows == 0 || cols == 0) return;
  const qint64 row = Grid().Row() - 1;
  const qint64 col = Grid().Col() - 1;
  // Right and Left go through the matrix as it is read, Down and Up through one column of it.
  const qint64 place = row * cols + col;
  const qint64 all = qint64{rows} * cols;
  qint64 next = place;
  if (key == Qt::Key_Right) next = (place + 1) % all;
  if (key == Qt::Key_Left) next = (place + all - 1) % all;
  if (key == Qt::Key_Down) next = (row + 1) % rows * cols + col;
  if (key == Qt::Key_Up) next = (row + rows - 1) % rows * cols + col;
  Grid().SetCellToCover(static_cast<int>(next / cols) + 1, static_cast<int>(next % cols) + 1);
  StartEditing();
}

void EditorWindow::PasteIntoCells() {
  const std::string text = QApplication::clipboard()->text().toStdString();
  if (text.empty() || !Grid().HasCurrentCell()) return;
  const CellBlock at = Grid().SelectedOrCurrent();
  const auto pasted = Commands().Paste(Slot(), at.top, at.left, text);
  if (!pasted) return;
  Grid().SelectBlock({pasted->firstRow, pasted->firstCol, pasted->lastRow, pasted->lastCol});
}

void EditorWindow::PasteIntoBox() {
  const std::string clipboard = QApplication::clipboard()->text().toStdString();
  const QString text = QString::fromStdString(PlainCellText(clipboard));
  if (!std::all_of(text.begin(), text.end(), IsAcceptedInCell)) {
    PasteIntoCells();
  } else if (!text.isEmpty()) {
    Box()->insert(text);
  }
}

}  // namespace qmx
