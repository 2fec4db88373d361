// SPDX-License-Identifier: MIT
#pragma once

#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>
#include <QWidget>

#include "commands/command_runner.h"
#include "exchange/copy_forms.h"
#include "grids/digits_line.h"
#include "grids/entry_box.h"
#include "grids/matrix_grid.h"
#include "workspace/slot_table.h"

namespace qmx {

/// What the windows of all matrices share: the grid, the entry box over its current cell, the
/// button that toggles the width, copying of the selected cells, going to a cell by its numbers,
/// and a close box that only hides. Window, grid and caption are named by the slot table.
class GridWindow : public QWidget {
  Q_OBJECT

 public:
  qmx::Slot Slot() const { return slot_; }
  MatrixGrid& Grid() { return *grid_; }
  const MatrixGrid& Grid() const { return *grid_; }

  /// Brings the grid in line with what it is to show; the window is shaped with it unless the user
  /// has given the window a size.
  void Show(const GridContent& content, bool wide);
  /// Brings back what the grid showed.
  void Restore(const GridModel::Contents& contents, bool wide);
  /// Tells below the grid why its contents no longer fit what they were computed from; nothing
  /// where they do.
  void ShowStale(const QString& why);
  /// Tells how many digits hold, in the cells and below the grid.
  void ShowDigits(const ShownDigits& digits);
  /// Shows exact fractions in place of elements; null: the elements again.
  void ShowFractions(std::shared_ptr<const std::vector<ExactNumber>> fractions);
  /// Gives every data column the default width, or twice it.
  void SetWide(bool wide);
  /// The present size is not the user's choice: the window may still be shaped for its grid.
  void AcceptSize() { fitted_ = size(); }
  /// Copies the selected cells, or the whole matrix where none are selected, in the form of another
  /// program.
  void CopyAs(CopyForm form);
  /// True where the size is that which the user gave the window.
  bool HasChosenSize() const { return fitted_.isValid() && size() != fitted_; }
  /// Hides the window, as its close box does.
  void Dismiss();
  /// Ends the edit or inspection of a cell.
  void HideEntryBox();
  /// Entries for how the matrix is seen, at the end of the menus of its cells.
  void AddViewEntries(const QList<QAction*>& entries) { viewEntries_ += entries; }
  /// Adds a button to the line below the grid, right of those that are there.
  void AddToLowerLine(QWidget& button);
  /// Brings the window to the front, at an element, counted from 1.
  void GoToElement(int row, int col);

 Q_SIGNALS:
  /// The user wants the digits to be checked, or wants that no longer.
  void CheckAsked(bool wanted);

 protected:
  GridWindow(CommandRunner& commands, qmx::Slot slot);

  CommandRunner& Commands() { return commands_; }
  EntryBox* Box() { return box_; }
  /// Adds the entry box. It lies over the grid as a sibling, so that screen readers meet it.
  void AddEntryBox();
  void AddToggle();
  /// Adds a widget below all that is there.
  void AddBelow(QWidget* widget) { layout_->addWidget(widget); }
  /// Lays the entry box over the current cell, with the cell's text and tool tip.
  void OpenEntryBox();
  /// Writes a text into the entry box as if nobody had typed it.
  void FillEntryBox(const QString& text);
  void ShowToolTip(const QString& text);
  /// Pasting from the clipboard, asked for on the grid and in the entry box.
  virtual void PasteIntoCells() {}
  virtual void PasteIntoBox();
  /// Adds the entry for pasting to the menu.
  void AddPaste();

  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  Q_INVOKABLE void PlaceEntryBox();
  void Toggle();
  void TakeFont();
  void FitToGrid();
  QSize LargestSize() const;

  QAction* AddEntry(const char* name, const QString& text, const QString& toolTip);
  void AddEntries();
  void ShowMenu(const QPoint& where);
  void ExtendBoxMenu(QMenu* menu);
  void CopyCells(bool headers);
  QMenu* MakeCopyAsMenu(QMenu* parent);
  FractionOf ShownFractions() const;
  void CopyFromBox();
  void GoTo();

  CommandRunner& commands_;
  const qmx::Slot slot_;
  MatrixGrid* grid_;
  EntryBox* box_ = nullptr;
  QVBoxLayout* layout_;
  QHBoxLayout* lower_;  ///< The line below the grid.
  QLabel* stale_;
  DigitsLine* digits_;
  // The entries of the grid's menu.
  QAction* copy_ = nullptr;
  QAction* copyWithHeaders_ = nullptr;
  QAction* paste_ = nullptr;  ///< In editors.
  QAction* selectAll_ = nullptr;
  QAction* goTo_ = nullptr;
  QList<QAction*> viewEntries_;
  QSize fitted_;  ///< The size that was last chosen for the window rather than by the user.
};

}  // namespace qmx
