// SPDX-License-Identifier: MIT
// Selecting a block of cells in the grid by keys, clicks and assistive technology.

#include <QAccessible>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTimerEvent>

#include "grids/accessible_grid.h"
#include "grids/matrix_grid.h"

namespace qmx {
namespace {

using Span = GridSelection::Span;

constexpr int kScrollInterval = 50;  // Milliseconds between two steps of a drag beyond the edge.

bool IsArrow(int key) { return key >= Qt::Key_Left && key <= Qt::Key_Down; }

}  // namespace

CellBlock MatrixGrid::AllCells() const {
  const int first = model_->HeaderRows();
  return {first, 1, first + model_->DataRows() - 1, model_->DataCols()};
}

std::optional<CellBlock> MatrixGrid::Selected() const {
  if (!selection_.IsActive()) return std::nullopt;
  return selection_.Block(AllCells());
}

CellBlock MatrixGrid::SelectedOrCurrent() const {
  return Selected().value_or(CellBlock{Row(), Col(), Row(), Col()});
}

void MatrixGrid::SelectBlock(const CellBlock& block) {
  PlaceCurrentCell({block.top, block.left});
  BeginSelection(Span::kCells, {block.top, block.left});
  ExtendSelection({block.bottom, block.right});
}

void MatrixGrid::selectAll() {
  if (HasCurrentCell()) BeginSelection(Span::kAll, {Row(), Col()});
}

void MatrixGrid::EndSelection() {
  if (!selection_.IsActive()) return;
  selection_.Clear();
  PublishSelection();
}

void MatrixGrid::BeginSelection(Span span, GridCell cell) {
  selection_.Begin(span, cell);
  Q_EMIT SelectionBegan();
  PublishSelection();
}

void MatrixGrid::ExtendSelection(GridCell cell) {
  if (selection_.End() == cell) return;
  selection_.ExtendTo(cell);
  PublishSelection();
}

/// Brings what Qt and assistive technology know in line with the selection.
void MatrixGrid::PublishSelection() {
  const QScopedValueRollback<bool> guard(publishing_, true);
  const auto block = Selected();
  if (block) {
    const QItemSelection cells(model_->index(block->top, block->left),
                               model_->index(block->bottom, block->right));
    selectionModel()->select(cells, QItemSelectionModel::ClearAndSelect);
    const int shift = 1 - model_->HeaderRows();
    setAccessibleDescription(tr("Selected: rows %1 to %2, columns %3 to %4")
                                 .arg(block->top + shift)
                                 .arg(block->bottom + shift)
                                 .arg(block->left)
                                 .arg(block->right));
  } else {
    selectionModel()->clearSelection();
    setAccessibleDescription({});
  }
  viewport()->update();
}

void MatrixGrid::selectionChanged(const QItemSelection& selected,
                                  [[maybe_unused]] const QItemSelection& deselected) {
  // The table's own routine lists every cell of a selection for screen readers.
  QAccessibleEvent changed(this, QAccessible::SelectionWithin);
  QAccessible::updateAccessibility(&changed);
  if (!publishing_) TakeOver(selected);
}

// The table's own routine counts cells in a way that is not that of our tree: it is passed over.
void MatrixGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  if (!covering_) TellFocus(*this);
  QAbstractItemView::currentChanged(current, previous);  // NOLINT(bugprone-parent-virtual-call)
}

/// A change that came from outside, from assistive technology: one cell is a choice, as a click on
/// it.
void MatrixGrid::TakeOver(const QItemSelection& selected) {
  if (selected.isEmpty()) {
    if (!selectionModel()->hasSelection()) EndSelection();
    return;
  }
  const QItemSelectionRange& range = selected.front();
  const CellBlock all = AllCells();
  const CellBlock block{std::max(range.top(), all.top), std::max(range.left(), all.left),
                        range.bottom(), range.right()};
  selection_.Clear();
  PublishSelection();
  if (block.top > block.bottom || block.left > block.right) return;
  if (!block.IsOneCell()) {
    SelectBlock(block);
  } else {
    SetCurrentCell(block.top, block.left);
    Q_EMIT CellChosen(block.top, block.left);
  }
}

GridCell MatrixGrid::KeyTarget(const QKeyEvent& event, GridCell from) const {
  const CellBlock all = AllCells();
  const bool far = event.modifiers().testFlag(Qt::ControlModifier);
  switch (event.key()) {
    case Qt::Key_Home:
      return {far ? all.top : from.row, all.left};
    case Qt::Key_End:
      return {far ? all.bottom : from.row, all.right};
    case Qt::Key_PageUp:
      return all.Nearest({from.row - RowsPerPage(), from.col});
    case Qt::Key_PageDown:
      return all.Nearest({from.row + RowsPerPage(), from.col});
    case Qt::Key_Up:
      return all.Nearest({far ? all.top : from.row - 1, from.col});
    case Qt::Key_Down:
      return all.Nearest({far ? all.bottom : from.row + 1, from.col});
    case Qt::Key_Left:
      return all.Nearest({from.row, far ? all.left : from.col - 1});
    case Qt::Key_Right:
      return all.Nearest({from.row, far ? all.right : from.col + 1});
    default:
      return from;
  }
}

bool MatrixGrid::IsMoveKey(int key) {
  return key == Qt::Key_Home || key == Qt::Key_End || key == Qt::Key_PageUp ||
         key == Qt::Key_PageDown;
}

bool MatrixGrid::MoveByKey(const QKeyEvent& event) {
  if (!IsMoveKey(event.key())) return false;
  const GridCell target = KeyTarget(event, {Row(), Col()});
  SetCurrentCell(target.row, target.col);
  return true;
}

bool MatrixGrid::SelectByKey(const QKeyEvent& event) {
  const auto held = event.modifiers() & ~Qt::KeypadModifier;
  if (!HasCurrentCell()) return false;
  if (event.matches(QKeySequence::SelectAll)) {
    selectAll();
    return true;
  }
  if (event.key() == Qt::Key_Space && (held == Qt::ShiftModifier || held == Qt::ControlModifier)) {
    BeginSelection(held == Qt::ShiftModifier ? Span::kRows : Span::kColumns, {Row(), Col()});
    return true;
  }
  const bool moves = IsArrow(event.key()) || IsMoveKey(event.key());
  if (!moves || (held & ~Qt::ControlModifier) != Qt::ShiftModifier) return false;
  if (!selection_.IsActive()) BeginSelection(Span::kCells, {Row(), Col()});
  const GridCell target = KeyTarget(event, selection_.End());
  ExtendSelection(target);
  scrollTo(model_->index(target.row, target.col), EnsureVisible);
  return true;
}

void MatrixGrid::PressCell(GridCell cell, bool extend) {
  if (extend) {
    if (selection_.Kind() != Span::kCells) BeginSelection(Span::kCells, {Row(), Col()});
    ExtendSelection(cell);
  } else {
    SetCurrentCell(cell.row, cell.col);
    Q_EMIT CellChosen(cell.row, cell.col);
  }
}

void MatrixGrid::PressHeader(GridCell cell, bool extend) {
  const bool inHeaderRow = cell.row < model_->HeaderRows();
  if (inHeaderRow && cell.col == 0) {
    selectAll();
    return;
  }
  const Span span = inHeaderRow ? Span::kColumns : Span::kRows;
  const GridCell nearest = AllCells().Nearest(cell);
  if (!extend) {
    PlaceCurrentCell(nearest);
    BeginSelection(span, nearest);
  } else {
    if (selection_.Kind() != span) BeginSelection(span, {Row(), Col()});
    ExtendSelection(nearest);
  }
}

void MatrixGrid::DragTo(const QPoint& point) {
  const GridCell cell = CellNear(point);
  if (!selection_.IsActive()) {
    if (cell == GridCell{Row(), Col()}) return;
    BeginSelection(Span::kCells, {Row(), Col()});
  }
  ExtendSelection(cell);
}

GridCell MatrixGrid::CellNear(const QPoint& point) const {
  const int x =
      std::clamp(point.x(), HeaderWidth(), std::max(HeaderWidth(), viewport()->width() - 1));
  const int y =
      std::clamp(point.y(), HeaderHeight(), std::max(HeaderHeight(), viewport()->height() - 1));
  const CellBlock all = AllCells();
  const int row = rowAt(y);
  const int col = columnAt(x);
  return {row < 0 ? all.bottom : row, col < 0 ? all.right : col};
}

void MatrixGrid::mouseMoveEvent(QMouseEvent* event) {
  event->accept();
  if (!dragging_ || !event->buttons().testFlag(Qt::LeftButton)) return;
  dragPoint_ = event->position().toPoint();
  DragTo(dragPoint_);
  const QRect room = viewport()->rect().adjusted(HeaderWidth(), HeaderHeight(), 0, 0);
  if (room.contains(dragPoint_)) {
    dragTimer_.stop();
  } else if (!dragTimer_.isActive()) {
    dragTimer_.start(kScrollInterval, this);
  }
}

void MatrixGrid::mouseReleaseEvent(QMouseEvent* event) {
  event->accept();
  dragging_ = false;
  dragTimer_.stop();
}

void MatrixGrid::timerEvent(QTimerEvent* event) {
  if (event->timerId() != dragTimer_.timerId()) {
    QTableView::timerEvent(event);
    return;
  }
  // The pointer rests beyond an edge: a step further that way. A drag along headers goes one way.
  const auto step = [](QScrollBar* bar, int at, int near, int far, int size) {
    if (at < near) bar->setValue(bar->value() - size);
    if (at > far) bar->setValue(bar->value() + size);
  };
  if (selection_.Kind() != Span::kColumns) {
    step(verticalScrollBar(), dragPoint_.y(), HeaderHeight(), viewport()->height() - 1,
         rowHeight(0));
  }
  if (selection_.Kind() != Span::kRows) {
    step(horizontalScrollBar(), dragPoint_.x(), HeaderWidth(), viewport()->width() - 1,
         columnWidth(1));
  }
  DragTo(dragPoint_);
}

void MatrixGrid::contextMenuEvent(QContextMenuEvent* event) {
  if (!HasCurrentCell()) return;
  QPoint where = event->globalPos();
  if (event->reason() == QContextMenuEvent::Mouse) {
    const QModelIndex index = indexAt(event->pos());
    const auto block = Selected();
    const GridCell cell = AllCells().Nearest({index.row(), index.column()});
    const bool within = block && block->Contains(cell.row, cell.col);
    if (!index.isValid() || within) {
      // The menu is for what is selected.
    } else if (model_->IsData(index.row(), index.column())) {
      SetCurrentCell(index.row(), index.column());
    } else {
      PressHeader({index.row(), index.column()}, false);
    }
  } else {
    const QRect cell = CellRect(Row(), Col()) & viewport()->rect();
    where = viewport()->mapToGlobal(cell.isEmpty() ? QPoint(0, 0) : cell.bottomLeft());
  }
  Q_EMIT MenuRequested(where);
}

}  // namespace qmx
