// SPDX-License-Identifier: MIT
// What the windows of all matrices do with chosen cells: the grid's menu, copying, going to a cell.

#include <QApplication>
#include <QClipboard>
#include <QMimeData>

#include "commands/grid_commands.h"
#include "desktop/window_front.h"
#include "grids/go_to_dialog.h"
#include "grids/grid_window.h"
#include "grids/qt_text.h"

namespace qmx {

QAction* GridWindow::AddEntry(const char* name, const QString& text, const QString& toolTip) {
  auto* entry = new QAction(text, this);
  entry->setObjectName(name);
  entry->setToolTip(toolTip);
  entry->setShortcutVisibleInContextMenu(true);
  return entry;
}

void GridWindow::AddEntries() {
  copy_ = AddEntry("mnuCopy", tr("&Copy"), tr("Copies the selected cells with all digits"));
  copyWithHeaders_ = AddEntry("mnuCopyWithHeaders", tr("Copy with &headers"),
                              tr("Copies the selected cells and the headers beside them"));
  selectAll_ = AddEntry("mnuSelectAll", tr("Select &all"), tr("Selects all cells of the matrix"));
  goTo_ = AddEntry("mnuGoTo", tr("&Go to..."), tr("Goes to a row and column"));
  // Grid and entry box answer these keys themselves; the menu only tells them.
  copy_->setShortcut(QKeySequence::Copy);
  selectAll_->setShortcut(QKeySequence::SelectAll);
  goTo_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_G));
  addAction(goTo_);
  connect(copy_, &QAction::triggered, this, [this] { CopyCells(false); });
  connect(copyWithHeaders_, &QAction::triggered, this, [this] { CopyCells(true); });
  connect(selectAll_, &QAction::triggered, grid_, &MatrixGrid::selectAll);
  connect(goTo_, &QAction::triggered, this, &GridWindow::GoTo);
  connect(grid_, &MatrixGrid::CopyRequested, this, [this] { CopyCells(false); });
  connect(grid_, &MatrixGrid::PasteRequested, this, [this] { PasteIntoCells(); });
  connect(grid_, &MatrixGrid::MenuRequested, this, &GridWindow::ShowMenu);
  connect(grid_, &MatrixGrid::SelectionBegan, this, &GridWindow::HideEntryBox);
}

void GridWindow::AddPaste() {
  paste_ = AddEntry("mnuPaste", tr("&Paste"),
                    tr("Puts a block of numbers from the clipboard into the cells"));
  paste_->setShortcut(QKeySequence::Paste);
  connect(paste_, &QAction::triggered, this, [this] { PasteIntoCells(); });
}

void GridWindow::ShowMenu(const QPoint& where) {
  HideEntryBox();
  auto* menu = new QMenu(this);
  menu->setObjectName("mnuCells");
  menu->setAccessibleName(tr("Cells"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setToolTipsVisible(true);
  menu->addActions({copy_, copyWithHeaders_});
  menu->addMenu(MakeCopyAsMenu(menu));
  if (paste_ != nullptr) {
    const QMimeData* held = QApplication::clipboard()->mimeData();
    paste_->setEnabled(held != nullptr && held->hasText());
    menu->addAction(paste_);
  }
  menu->addSeparator();
  menu->addActions({selectAll_, goTo_});
  menu->addSeparator();
  menu->addActions(viewEntries_);
  menu->popup(where);
}

// The box lies over the current cell, so that its menu stands for the grid's, too.
void GridWindow::ExtendBoxMenu(QMenu* menu) {
  menu->setAccessibleName(tr("Cell"));
  menu->setToolTipsVisible(true);
  menu->addSeparator();
  menu->addActions({copyWithHeaders_, goTo_});
  menu->addSeparator();
  menu->addActions(viewEntries_);
}

void GridWindow::GoToElement(int row, int col) {
  HideEntryBox();
  grid_->SetCurrentCell(row - 1 + grid_->Model().HeaderRows(), col);
  setAttribute(Qt::WA_ShowWithoutActivating, false);
  BringToFront(*this);
  grid_->setFocus();
}

void GridWindow::CopyCells(bool headers) {
  if (!grid_->HasCurrentCell()) return;
  const CellBlock cells = grid_->SelectedOrCurrent();
  // Where there is no header row, the grid's first row is its row 0.
  const int shift = 1 - grid_->Model().HeaderRows();
  const ShownCells shown{
      [this, shift](int row, int col) { return grid_->TextMatrix(row - shift, col).toStdString(); },
      [this, shift](int row, int col) { return grid_->Model().IsBlank(row - shift, col); },
      ShownFractions()};
  std::optional<std::string> text;
  commands_.Do([&](Context& context) {
    text = CopyBlock(context, slot_,
                     {cells.top + shift, cells.left, cells.bottom + shift, cells.right}, shown,
                     headers);
  });
  if (!text) return;
  // A single number goes into a field as well.
  if (cells.IsOneCell() && !headers) text->pop_back();
  QApplication::clipboard()->setText(QString::fromStdString(*text));
}

FractionOf GridWindow::ShownFractions() const {
  if (!grid_->Model().HasFractions()) return {};
  const int shift = 1 - grid_->Model().HeaderRows();
  return [this, shift](int row, int col) {
    return grid_->Model().Fraction(row - shift, col).toStdString();
  };
}

QMenu* GridWindow::MakeCopyAsMenu(QMenu* parent) {
  auto* menu = new QMenu(tr("Copy &as"), parent);
  menu->setObjectName("mnuCopyAs");
  for (const CopyFormInfo& info : kCopyForms) {
    QAction* entry = menu->addAction(ToQString(info.title));
    entry->setObjectName(QString("mnuCopyAs_%1").arg(static_cast<int>(info.form)));
    connect(entry, &QAction::triggered, this, [this, form = info.form] { CopyAs(form); });
  }
  return menu;
}

void GridWindow::CopyAs(CopyForm form) {
  const int shift = 1 - grid_->Model().HeaderRows();
  CellRange cells{1, 1, grid_->Model().DataRows(), grid_->Model().DataCols()};
  if (const std::optional<CellBlock> block = grid_->Selected())
    cells = {block->top + shift, block->left, block->bottom + shift, block->right};
  std::optional<std::string> text;
  commands_.Do(
      [&](Context& context) { text = CopyBlockAs(context, slot_, cells, form, ShownFractions()); });
  if (text) QApplication::clipboard()->setText(QString::fromStdString(*text));
}

void GridWindow::CopyFromBox() {
  const bool isCell = box_->text() == grid_->TextMatrix(grid_->Row(), grid_->Col());
  const bool isWhole = !box_->hasSelectedText() || box_->selectedText() == box_->text();
  if (isCell && isWhole) {
    CopyCells(false);
  } else {
    box_->copy();
  }
}

void GridWindow::PasteIntoBox() { box_->paste(); }

void GridWindow::GoTo() {
  if (!grid_->HasCurrentCell()) return;
  const int shift = 1 - grid_->Model().HeaderRows();
  auto* dialog = new GoToDialog(grid_->Model().DataRows(), grid_->Model().DataCols(),
                                {grid_->Row() + shift, grid_->Col()}, this);
  connect(dialog, &GoToDialog::Chosen, this, [this, shift](GridCell cell) {
    grid_->SetCurrentCell(cell.row - shift, cell.col);
    grid_->setFocus();
  });
  dialog->show();
}

}  // namespace qmx
