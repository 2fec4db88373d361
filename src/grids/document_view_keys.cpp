// SPDX-License-Identifier: MIT
// What the view of a document does with keys and clicks.

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>
#include <limits>

#include "grids/document_view.h"

namespace qmx {

void DocumentView::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) {
    Q_EMIT CopyRequested();
  } else if (event->matches(QKeySequence::SelectAll)) {
    SelectAll();
  } else if (event->key() == Qt::Key_Escape && HasSelection()) {
    EndSelection();
  } else if (!SelectByKey(*event) && !ScrollByKey(*event)) {
    event->ignore();
  }
}

void DocumentView::ScrollDown(int distance) {
  QScrollBar* bar = verticalScrollBar();
  const int before = bar->value();
  bar->setValue(before + distance);
  // Where nothing is left to scroll, who hears the document goes on through what is in sight.
  if (bar->value() == before)
    MoveCaret(std::clamp(block_ + (distance > 0 ? 1 : -1), 0, std::max(0, BlockCount() - 1)));
}

bool DocumentView::ScrollByKey(const QKeyEvent& event) {
  const auto held = event.modifiers() & ~Qt::KeypadModifier;
  QScrollBar* down = verticalScrollBar();
  QScrollBar* across = horizontalScrollBar();
  const bool isJump = held == Qt::ControlModifier;
  if (held != Qt::NoModifier && !isJump && event.key() != Qt::Key_Space) return false;
  switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down: {
      const bool next = event.key() == Qt::Key_Down;
      if (isJump && document_ != nullptr) {
        GoToHeading(next);
      } else {
        ScrollDown(next ? down->singleStep() : -down->singleStep());
      }
      return true;
    }
    case Qt::Key_PageUp:
      ScrollDown(-down->pageStep());
      return true;
    case Qt::Key_PageDown:
      ScrollDown(down->pageStep());
      return true;
    case Qt::Key_Space:
      ScrollDown(held == Qt::ShiftModifier ? -down->pageStep() : down->pageStep());
      return true;
    case Qt::Key_Home:
      down->setValue(0);
      across->setValue(0);
      MoveCaret(0);
      return true;
    case Qt::Key_End:
      down->setValue(down->maximum());
      MoveCaret(BlockCount() - 1);
      return true;
    case Qt::Key_Left:
      across->setValue(across->value() - across->singleStep());
      return true;
    case Qt::Key_Right:
      across->setValue(across->value() + across->singleStep());
      return true;
    default:
      return false;
  }
}

/// The piece that stands nearest above or below one, in another line.
int DocumentView::PieceOnNextLine(int piece, bool down) const {
  const std::vector<PlacedPiece>& pieces = layout_.Pieces();
  const int last = static_cast<int>(pieces.size()) - 1;
  const qreal x = pieces[piece].at.x();
  const int step = down ? 1 : -1;
  int at = piece;
  while (at >= 0 && at <= last && pieces[at].at.y() == pieces[piece].at.y()) at += step;
  if (at < 0 || at > last) return std::clamp(at, 0, last);
  const qreal line = pieces[at].at.y();
  int nearest = at;
  for (; at >= 0 && at <= last && pieces[at].at.y() == line; at += step) {
    if (std::abs(pieces[at].at.x() - x) < std::abs(pieces[nearest].at.x() - x)) nearest = at;
  }
  return nearest;
}

/// Shift with an arrow. Where nothing is selected, the selection begins at the top of what is in
/// sight, or where the mouse was last.
bool DocumentView::SelectByKey(const QKeyEvent& event) {
  const bool across = event.key() == Qt::Key_Left || event.key() == Qt::Key_Right;
  const bool along = event.key() == Qt::Key_Up || event.key() == Qt::Key_Down;
  const bool toEnd = event.key() == Qt::Key_Home || event.key() == Qt::Key_End;
  const auto held = event.modifiers() & ~Qt::KeypadModifier;
  if (!(across || along || toEnd) || !held.testFlag(Qt::ShiftModifier)) return false;
  if (layout_.Pieces().empty()) return true;
  const int last = static_cast<int>(layout_.Pieces().size()) - 1;
  if (!HasSelection()) {
    const int start =
        pressed_ >= 0 && pressed_ <= last ? pressed_ : layout_.PieceNear(QPointF(0, 1) - Offset());
    Select(start, start);
    if (!toEnd) return EnsureVisible(caret_), true;
  }
  const bool forward =
      event.key() == Qt::Key_Right || event.key() == Qt::Key_Down || event.key() == Qt::Key_End;
  int to = along ? PieceOnNextLine(caret_, forward) : caret_ + (forward ? 1 : -1);
  if (toEnd) to = forward ? last : 0;
  Select(anchor_, std::clamp(to, 0, last));
  EnsureVisible(caret_);
  return true;
}

void DocumentView::EnsureVisible(int piece) {
  const QRectF rect = layout_.Pieces()[piece].Rect().translated(Offset());
  const auto shift = [](qreal near, qreal far, int room) {
    if (near < 0 || far - near > room) return near;
    return far > room ? far - room : 0.0;
  };
  QScrollBar* down = verticalScrollBar();
  QScrollBar* across = horizontalScrollBar();
  down->setValue(down->value() + qRound(shift(rect.top(), rect.bottom(), viewport()->height())));
  across->setValue(across->value() + qRound(shift(rect.left(), rect.right(), viewport()->width())));
  MoveCaret(layout_.Pieces()[piece].block);
}

void DocumentView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || document_ == nullptr) return;
  const int piece = layout_.PieceNear(event->position() - Offset());
  if (piece < 0) return;
  if (event->modifiers().testFlag(Qt::ShiftModifier) && pressed_ >= 0) {
    Select(HasSelection() ? anchor_ : pressed_, piece);
    return;
  }
  pressed_ = piece;
  EndSelection();
}

void DocumentView::mouseMoveEvent(QMouseEvent* event) {
  if (!event->buttons().testFlag(Qt::LeftButton) || pressed_ < 0 || document_ == nullptr) return;
  // Beyond an edge the document follows the mouse.
  const QPointF point = event->position();
  const int beyond =
      point.y() < 0 ? qRound(point.y()) : std::max(0, qRound(point.y()) - viewport()->height());
  if (beyond != 0) verticalScrollBar()->setValue(verticalScrollBar()->value() + beyond);
  const int piece = layout_.PieceNear(point - Offset());
  if (piece < 0 || (!HasSelection() && piece == pressed_)) return;
  Select(pressed_, piece);
}

void DocumentView::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || document_ == nullptr) return;
  const int piece = layout_.PieceNear(event->position() - Offset());
  if (piece >= 0) Select(piece, piece);
}

void DocumentView::contextMenuEvent(QContextMenuEvent* event) {
  Q_EMIT MenuRequested(event->globalPos());
}

void DocumentView::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
}

}  // namespace qmx
