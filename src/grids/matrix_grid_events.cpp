// What the grid does with paint requests, keys and clicks.

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QPainter>

#include "grids/matrix_grid.h"

namespace qmx {
namespace {

constexpr int kDarkBelow = 128;  // Lightness under which a background counts as dark.

}  // namespace

void MatrixGrid::paintEvent([[maybe_unused]] QPaintEvent* event) {
  QPainter painter(viewport());
  const QRect all = viewport()->rect();
  painter.fillRect(all, palette().base());
  const int rows = model_->rowCount();
  const int cols = model_->columnCount();
  const int headerRows = model_->HeaderRows();
  const auto orLast = [](int found, int last) { return found < 0 ? last : found; };
  const int firstRow = orLast(rowAt(HeaderHeight()), rows);
  const int lastRow = orLast(rowAt(all.bottom()), rows - 1);
  const int firstCol = orLast(columnAt(HeaderWidth()), cols);
  const int lastCol = orLast(columnAt(all.right()), cols - 1);
  const QRect right = all.adjusted(HeaderWidth(), 0, 0, 0);
  const QRect below = all.adjusted(0, HeaderHeight(), 0, 0);
  PaintArea(painter, {firstRow, lastRow, firstCol, lastCol, right & below});
  PaintCurrentCell(painter);
  PaintArea(painter, {0, headerRows - 1, firstCol, lastCol, right});
  PaintArea(painter, {firstRow, lastRow, 0, 0, below});
  PaintArea(painter, {0, headerRows - 1, 0, 0, all});
}

void MatrixGrid::PaintArea(QPainter& painter, const Area& area) const {
  painter.setClipRect(area.clip);
  for (int row = area.firstRow; row <= area.lastRow; ++row) {
    for (int col = area.firstCol; col <= area.lastCol; ++col) {
      PaintCell(painter, CellRect(row, col), row, col);
    }
  }
}

void MatrixGrid::PaintCell(QPainter& painter, const QRect& rect, int row, int col) const {
  const bool isData = model_->IsData(row, col);
  if (!isData) painter.fillRect(rect, palette().button());
  painter.setPen(palette().color(isData ? QPalette::Midlight : QPalette::Mid));
  painter.drawLine(rect.bottomLeft(), rect.bottomRight());
  painter.drawLine(rect.topRight(), rect.bottomRight());
  if (lastColumnApart_ && col > 1 && col == model_->DataCols()) {
    QColor line = palette().color(QPalette::Text);
    line.setAlphaF(0.5F);
    painter.fillRect(QRect(rect.topLeft(), QSize(2, rect.height())), line);
  }
  const QRect room = rect.adjusted(kTextMargin, 0, -kTextMargin, 0);
  const QString text =
      fontMetrics().elidedText(model_->Text(row, col), Qt::ElideRight, room.width());
  painter.setPen(TextColour(row, col));
  painter.drawText(room, (isData ? Qt::AlignRight : Qt::AlignHCenter) | Qt::AlignVCenter, text);
}

void MatrixGrid::PaintCurrentCell(QPainter& painter) const {
  if (!currentIndex().isValid()) return;
  const QColor colour =
      palette().color(hasFocus() ? QPalette::Active : QPalette::Inactive, QPalette::Highlight);
  painter.setPen(QPen(colour, hasFocus() ? 2 : 1));
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
    QApplication::clipboard()->setText(TextMatrix(Row(), Col()));
  } else if (isArrow && held == Qt::NoModifier) {
    Q_EMIT ArrowPressed(event->key());
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
  const QModelIndex cell = indexAt(event->position().toPoint());
  if (event->button() != Qt::LeftButton || !model_->IsData(cell.row(), cell.column())) return;
  SetCurrentCell(cell.row(), cell.column());
  Q_EMIT CellChosen(cell.row(), cell.column());
}

// One cell is current, and no range is ever selected: dragging and double clicks mean nothing more.
void MatrixGrid::mouseMoveEvent(QMouseEvent* event) { event->accept(); }
void MatrixGrid::mouseReleaseEvent(QMouseEvent* event) { event->accept(); }
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
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) ApplyWidths();
}

void MatrixGrid::focusInEvent(QFocusEvent* event) {
  QTableView::focusInEvent(event);
  viewport()->update();
}

void MatrixGrid::focusOutEvent(QFocusEvent* event) {
  QTableView::focusOutEvent(event);
  viewport()->update();
}

}  // namespace qmx
