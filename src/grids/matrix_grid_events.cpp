// SPDX-License-Identifier: MIT
// What the grid does with paint requests, keys and clicks.

#include <QKeyEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyle>
#include <algorithm>

#include "grids/accessible_grid.h"
#include "grids/contrast.h"
#include "grids/digit_runs.h"
#include "grids/matrix_grid.h"

namespace qmx {
namespace {

constexpr int kDarkBelow = 128;  // Lightness under which a background counts as dark.

/// As much of the colour of the selection as leaves every text on a background readable.
constexpr double kSelectionShare = 0.3;

}  // namespace

void MatrixGrid::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  const QRect all = viewport()->rect();
  // Only what was damaged: a typed digit costs one cell, however many are in sight.
  const QRect damaged = event->rect();
  painter.fillRect(damaged, palette().base());
  const int rows = model_->rowCount();
  const int cols = model_->columnCount();
  const int headerRows = model_->HeaderRows();
  const auto orLast = [](int found, int last) { return found < 0 ? last : found; };
  const int firstRow = orLast(rowAt(std::max(damaged.top(), HeaderHeight())), rows);
  const int lastRow = orLast(rowAt(damaged.bottom()), rows - 1);
  const int firstCol = orLast(columnAt(std::max(damaged.left(), HeaderWidth())), cols);
  const int lastCol = orLast(columnAt(damaged.right()), cols - 1);
  const QRect right = all.adjusted(HeaderWidth(), 0, 0, 0);
  const QRect below = all.adjusted(0, HeaderHeight(), 0, 0);
  PaintArea(painter, {firstRow, lastRow, firstCol, lastCol, right & below}, damaged);
  painter.setClipRect(right & below);
  PaintSelectionFrame(painter);
  PaintCurrentCell(painter);
  PaintArea(painter, {0, headerRows - 1, firstCol, lastCol, right}, damaged);
  PaintArea(painter, {firstRow, lastRow, 0, 0, below}, damaged);
  PaintArea(painter, {0, headerRows - 1, 0, 0, all}, damaged);
}

void MatrixGrid::PaintArea(QPainter& painter, const Area& area, const QRect& damaged) const {
  painter.setClipRect(area.clip);
  for (int row = area.firstRow; row <= area.lastRow; ++row) {
    for (int col = area.firstCol; col <= area.lastCol; ++col) {
      const QRect rect = CellRect(row, col);
      if (rect.intersects(damaged)) PaintCell(painter, rect, row, col);
    }
  }
}

void MatrixGrid::PaintCell(QPainter& painter, const QRect& rect, int row, int col) const {
  const bool isData = model_->IsData(row, col);
  painter.fillRect(rect, Background(row, col));
  painter.setPen(palette().color(isData ? QPalette::Midlight : QPalette::Mid));
  painter.drawLine(rect.bottomLeft(), rect.bottomRight());
  painter.drawLine(rect.topRight(), rect.bottomRight());
  if (lastColumnApart_ && col > 1 && col == model_->DataCols()) {
    QColor line = palette().color(QPalette::Text);
    line.setAlphaF(0.5F);
    painter.fillRect(QRect(rect.topLeft(), QSize(2, rect.height())), line);
  }
  PaintText(painter, rect.adjusted(kTextMargin, 0, -kTextMargin, 0), row, col);
}

void MatrixGrid::PaintText(QPainter& painter, const QRect& room, int row, int col) const {
  const QString whole = model_->Text(row, col);
  const QString text = fontMetrics().elidedText(whole, Qt::ElideRight, room.width());
  const auto across = model_->IsData(row, col) ? Qt::AlignRight : Qt::AlignHCenter;
  const QColor colour = TextColour(row, col);
  const auto proved = model_->ProvedDigits(row, col);
  // A number that does not fit is cut off: what is left of it keeps one colour.
  auto runs = proved ? DigitRuns(whole, *proved) : std::vector<DigitRun>{};
  if (runs.size() > 1 && text != whole) runs.resize(1);
  const bool isGrey =
      std::any_of(runs.begin(), runs.end(), [](auto& run) { return !run.isProved; });
  const QColor other = isGrey ? UnprovedColour(colour, Background(row, col)) : colour;
  if (runs.size() < 2) {
    painter.setPen(runs.empty() || runs.front().isProved ? colour : other);
    painter.drawText(room, across | Qt::AlignVCenter, text);
    return;
  }
  const QRect all =
      QStyle::alignedRect(Qt::LeftToRight, across | Qt::AlignVCenter,
                          QSize(fontMetrics().horizontalAdvance(text), room.height()), room);
  for (const DigitRun& run : runs) {
    painter.setPen(run.isProved ? colour : other);
    painter.drawText(
        all.adjusted(fontMetrics().horizontalAdvance(text.left(run.start)), 0, kTextMargin, 0),
        Qt::AlignLeft | Qt::AlignVCenter, text.mid(run.start, run.length));
  }
}

QColor MatrixGrid::Background(int row, int col) const {
  const bool isData = model_->IsData(row, col);
  const QColor plain = palette().color(isData ? QPalette::Base : QPalette::Button);
  const auto block = Selected();
  if (!block) return plain;
  // Headers tell which rows and columns are selected. The current cell stays plain, to be found.
  const bool rowSelected = row >= block->top && row <= block->bottom;
  const bool colSelected = col >= block->left && col <= block->right;
  const bool isSelected = isData                       ? rowSelected && colSelected
                          : row < model_->HeaderRows() ? colSelected
                                                       : rowSelected;
  const bool isCurrent = row == Row() && col == Col();
  return isSelected && !isCurrent
             ? Mixed(plain, palette().color(QPalette::Highlight), kSelectionShare)
             : plain;
}

void MatrixGrid::PaintSelectionFrame(QPainter& painter) const {
  const auto block = Selected();
  if (!block) return;
  painter.setPen(palette().color(QPalette::Highlight));
  painter.setBrush(Qt::NoBrush);
  const QRect cells = CellRect(block->top, block->left) | CellRect(block->bottom, block->right);
  painter.drawRect(cells.adjusted(0, 0, -1, -1));
}

void MatrixGrid::PaintCurrentCell(QPainter& painter) const {
  // The frame tells where the keys go to: there is one of its kind on the screen.
  if (!currentIndex().isValid() || !hasFocus()) return;
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(visualRect(currentIndex()).adjusted(1, 1, -2, -2));
}

QColor MatrixGrid::TextColour(int row, int col) const {
  const bool isData = model_->IsData(row, col);
  const QColor own = model_->ColourOf(row, col);
  if (!own.isValid()) return palette().color(isData ? QPalette::Text : QPalette::ButtonText);
  const bool dark = palette().color(QPalette::Base).lightness() < kDarkBelow;
  // Pure blue and red cannot be read on a dark ground.
  return dark ? QColor::fromHsl(own.hslHue(), 255, 180) : own;
}

void MatrixGrid::keyPressEvent(QKeyEvent* event) {
  const auto held = event->modifiers() & ~Qt::KeypadModifier;
  const bool isArrow = event->key() >= Qt::Key_Left && event->key() <= Qt::Key_Down;
  if (event->matches(QKeySequence::Copy)) {
    Q_EMIT CopyRequested();
  } else if (event->matches(QKeySequence::Paste)) {
    Q_EMIT PasteRequested();
  } else if (isArrow && held == Qt::NoModifier) {
    EndSelection();
    Q_EMIT ArrowPressed(event->key());
  } else if (SelectByKey(*event)) {
    event->accept();
  } else if (event->key() == Qt::Key_Escape && selection_.IsActive()) {
    EndSelection();
  } else if (event->key() == Qt::Key_F2) {
    Q_EMIT CellChosen(Row(), Col());
  } else if (!MoveByKey(*event)) {
    const QString text = event->text();
    const bool isCommand = (held & ~Qt::ShiftModifier) != Qt::NoModifier;
    if (isCommand || text.isEmpty() || !text.front().isPrint()) {
      event->ignore();
    } else {
      Q_EMIT CharacterTyped(text);
    }
  }
}

void MatrixGrid::mousePressEvent(QMouseEvent* event) {
  const QModelIndex index = indexAt(event->position().toPoint());
  if (event->button() != Qt::LeftButton || !index.isValid() || !HasCurrentCell()) return;
  const bool extend = event->modifiers().testFlag(Qt::ShiftModifier);
  const GridCell cell{index.row(), index.column()};
  dragging_ = true;
  if (model_->IsData(cell.row, cell.col)) {
    PressCell(cell, extend);
  } else {
    PressHeader(cell, extend);
  }
}

void MatrixGrid::mouseDoubleClickEvent(QMouseEvent* event) { mousePressEvent(event); }

void MatrixGrid::scrollContentsBy(int dx, int dy) {
  QTableView::scrollContentsBy(dx, dy);
  // The fixed cells must not travel with the rest.
  viewport()->update();
  Q_EMIT CellsMoved();
}

void MatrixGrid::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  Q_EMIT CellsMoved();
}

void MatrixGrid::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange) return;
  {
    // Whoever holds the grid gives it another size first.
    const QSignalBlocker quiet(this);
    headerWidth_ = 0;
    ApplyWidths();
    WidenHeaderForLabels();
  }
  Q_EMIT FontChanged();
}

void MatrixGrid::focusInEvent(QFocusEvent* event) {
  QTableView::focusInEvent(event);
  viewport()->update();
  TellFocus(*this);
}

void MatrixGrid::focusOutEvent(QFocusEvent* event) {
  QTableView::focusOutEvent(event);
  viewport()->update();
}

}  // namespace qmx
