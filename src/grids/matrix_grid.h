// SPDX-License-Identifier: MIT
#pragma once

#include <QBasicTimer>
#include <QTableView>
#include <functional>
#include <optional>
#include <vector>

#include "base/matrix.h"
#include "grids/grid_model.h"
#include "grids/grid_selection.h"
#include "workspace/grids.h"

namespace qmx {

/// The grid control: a table of which row 0 and column 0 stay in place while the rest scrolls below
/// them. All cells, the corner (0, 0) included, are cells of one model and reached by row and
/// column. It paints the cells that are in sight and nothing else, so that its cost does not depend
/// on the size of the matrix.
///
/// The current cell is always a data cell. A click moves it; so do arrows, Home, End, Page Up, Page
/// Down, Ctrl+Home and Ctrl+End.
///
/// A block of data cells can be selected, by the same keys and clicks with Shift, by dragging, by
/// Ctrl+A, Ctrl+Space (columns) and Shift+Space (rows), and by clicks on the fixed cells. The
/// current cell stays where the block was begun. Whatever moves it alone ends the selection.
class MatrixGrid final : public QTableView {
  Q_OBJECT

 public:
  explicit MatrixGrid(bool hasHeaderRow, QWidget* parent = nullptr);

  // Shape and contents; the model tells the details.
  void SetUp(int rows, int cols, bool wide);
  void Populate(const Matrix& values, bool wide, const std::vector<bool>* columns = nullptr);
  QString TextMatrix(int row, int col) const { return model_->Text(row, col); }
  void SetTextMatrix(int row, int col, const QString& text);
  void SetTexts(int row, int col, TextBlock texts) { model_->SetTexts(row, col, std::move(texts)); }
  void SetCellColour(int row, int col, Colour colour);
  void SetGridColour(Colour colour);
  /// Gives every data column the default width, or twice it.
  void SetWide(bool wide);
  /// Sets the last data column apart with a line.
  void SetLastColumnApart() { lastColumnApart_ = true; }

  /// Brings back what the grid showed.
  void Restore(const GridModel::Contents& contents, bool wide);
  void ShowElements(const Matrix& values) { model_->ShowElements(values); }
  void RestoreText(int row, int col, const std::optional<QString>& text) {
    model_->RestoreText(row, col, text);
  }

  /// Shows what another grid shows, as long as that is there; null: nothing any more.
  void Follow(const MatrixGrid* other);
  void SetDigits(const ShownDigits& digits) { model_->SetDigits(digits); }
  /// Shows exact fractions, in columns that have room for them.
  void SetFractions(std::shared_ptr<const std::vector<ExactNumber>> fractions);

  const GridModel& Model() const { return *model_; }
  int ColWidth(int col) const { return columnWidth(col); }
  /// The width of a narrow data column in this grid's font.
  int DefaultColumnWidth() const;

  int Row() const { return currentIndex().row(); }
  int Col() const { return currentIndex().column(); }
  /// False where there are no data cells.
  bool HasCurrentCell() const { return model_->IsData(Row(), Col()); }
  /// Makes a data cell the current one, scrolls it into sight and ends the selection.
  void SetCurrentCell(int row, int col);
  /// The same for a cell that an entry box will cover at once: screen readers are told of the box.
  void SetCellToCover(int row, int col);
  /// The selected cells; nothing where none are.
  std::optional<CellBlock> Selected() const;
  /// The selected cells, else the current one, which must be there.
  CellBlock SelectedOrCurrent() const;
  /// Selects a block of data cells; its first one becomes the current cell.
  void SelectBlock(const CellBlock& block);
  void EndSelection();
  /// Does what a key means for the selection; false where it means nothing.
  bool SelectByKey(const QKeyEvent& event);

  /// Where a cell is, in the coordinates of the viewport.
  QRect CellRect(int row, int col) const { return visualRect(model_->index(row, col)); }
  /// True if no part of the cell is out of sight. A cell that is larger than the room for cells
  /// counts once it begins where that room begins.
  bool IsInSight(int row, int col) const;
  /// The size at which all cells are in sight without scrolling.
  QSize FullSize() const;

  QRect visualRect(const QModelIndex& index) const override;
  QModelIndex indexAt(const QPoint& point) const override;
  void scrollTo(const QModelIndex& index, ScrollHint hint) override;
  void selectAll() override;

 Q_SIGNALS:
  /// A click on a data cell, which is the current one now; or the key that stands for it, F2.
  void CellChosen(int row, int col);
  /// An arrow key. Whoever holds the grid decides where it leads to.
  void ArrowPressed(int key);
  /// A character typed on the grid.
  void CharacterTyped(const QString& character);
  /// A block of cells is being selected.
  void SelectionBegan();
  /// The keys for copying and pasting, and the one or the click that asks for a menu.
  void CopyRequested();
  void PasteRequested();
  void MenuRequested(const QPoint& where);
  /// Cells are elsewhere now: scrolled, or given another width.
  void CellsMoved();
  /// The header column became wider to hold its texts.
  void HeaderWidened();
  /// All cells have the size of another font.
  void FontChanged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  void timerEvent(QTimerEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
  void scrollContentsBy(int dx, int dy) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  static constexpr int kTextMargin = 6;  ///< Between a text and the edges of its cell.

  /// The rows and columns of one of the four areas, and where they may paint.
  struct Area {
    int firstRow, lastRow, firstCol, lastCol;
    QRect clip;
  };

  int HeaderWidth() const { return columnWidth(0); }
  int HeaderHeight() const { return model_->HeaderRows() == 0 ? 0 : rowHeight(0); }
  /// Gives the grid another shape; the current cell stays where it can.
  void Reshape(bool wide, const std::function<void()>& change);
  int TextWidthWithMargins(const QString& text) const;
  void WidenHeaderFor(const QString& text);
  int LabelledRows() const;
  /// The same for all texts that may stand in the header column.
  void WidenHeaderForLabels();
  void ApplyWidths();
  /// The model has another shape, by the doing of the grid that this one follows.
  void TakeOverShape();
  void PlaceCurrentCell(GridCell cell);
  void PaintArea(QPainter& painter, const Area& area, const QRect& damaged) const;
  void PaintCell(QPainter& painter, const QRect& rect, int row, int col) const;
  void PaintText(QPainter& painter, const QRect& room, int row, int col) const;
  void PaintSelectionFrame(QPainter& painter) const;
  void PaintCurrentCell(QPainter& painter) const;
  QColor Background(int row, int col) const;
  QColor TextColour(int row, int col) const;

  CellBlock AllCells() const;
  static bool IsMoveKey(int key);
  /// Where a key leads to from a cell.
  GridCell KeyTarget(const QKeyEvent& event, GridCell from) const;
  bool MoveByKey(const QKeyEvent& event);
  int RowsPerPage() const;

  void BeginSelection(GridSelection::Span span, GridCell cell);
  void ExtendSelection(GridCell cell);
  void PublishSelection();
  void TakeOver(const QItemSelection& selected);
  void PressCell(GridCell cell, bool extend);
  void PressHeader(GridCell cell, bool extend);
  void DragTo(const QPoint& point);
  /// The data cell in sight that is closest to a point.
  GridCell CellNear(const QPoint& point) const;

  GridModel* model_;  ///< Its own, or that of the grid that it follows.
  GridModel* own_;
  bool wide_ = false;
  bool lastColumnApart_ = false;
  int headerWidth_ = 0;
  GridSelection selection_;
  bool covering_ = false;    ///< The current cell changes, to be covered.
  bool publishing_ = false;  ///< The selection model changes by our own doing.
  bool dragging_ = false;
  QPoint dragPoint_;
  QBasicTimer dragTimer_;  ///< Runs while a drag rests beyond an edge.
};

}  // namespace qmx
