// SPDX-License-Identifier: MIT
#include "grids/picture_view.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QToolTip>
#include <algorithm>

#include "grids/announcer.h"

namespace qmx {
namespace {

QAccessibleInterface* MakeGraphic(const QString& kind, QObject* object) {
  if (kind != QLatin1String("qmx::PictureView")) return nullptr;
  return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Graphic);
}

}  // namespace

PictureView::PictureView(Source source, Maker maker, QWidget* parent)
    : QWidget(parent), source_(std::move(source)), maker_(maker) {
  static const bool isInstalled = [] {
    QAccessible::installFactory(MakeGraphic);
    return true;
  }();
  Q_UNUSED(isInstalled);
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::PointingHandCursor);
  setMinimumSize(160, 120);
}

void PictureView::Refresh() {
  picture_ = maker_(source_(), {size(), font(), palette()});
  const Matrix& matrix = source_();
  current_ = {std::clamp(current_.row, 1, std::max(1, matrix.Rows())),
              std::clamp(current_.col, 1, std::max(1, matrix.Cols()))};
  update();
  Q_EMIT CurrentChanged(CurrentText());
}

QString PictureView::CurrentText() const {
  return picture_ == nullptr || IsEmpty() ? QString() : picture_->Tell(current_);
}

void PictureView::Draw(QPainter& painter, const QSize& size) const {
  painter.fillRect(QRect(QPoint(0, 0), size), palette().color(QPalette::Window));
  if (!IsEmpty()) maker_(source_(), {size, font(), palette()})->Paint(painter);
}

void PictureView::GoTo(const GridCell& element) {
  current_ = element;
  update();
  Q_EMIT CurrentChanged(CurrentText());
}

bool PictureView::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const auto element = picture_ == nullptr ? std::nullopt : picture_->ElementAt(help->pos());
  if (element) {
    QToolTip::showText(help->globalPos(), picture_->Tell(*element), this);
  } else {
    QToolTip::hideText();
  }
  return true;
}

void PictureView::paintEvent([[maybe_unused]] QPaintEvent* event) {
  if (picture_ == nullptr || IsEmpty()) return;
  QPainter painter(this);
  picture_->Paint(painter);
  if (!hasFocus()) return;
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setBrush(Qt::NoBrush);
  // Two colours are seen on a square of any colour.
  const QRectF square = picture_->RectOf(current_);
  painter.setPen(QPen(palette().color(QPalette::Base), 4));
  painter.drawRect(square.adjusted(-1, -1, 1, 1));
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
  painter.drawRect(square.adjusted(-1, -1, 1, 1));
}

void PictureView::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Refresh();
}

void PictureView::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange) Refresh();
}

void PictureView::keyPressEvent(QKeyEvent* event) {
  if (picture_ == nullptr || IsEmpty()) return QWidget::keyPressEvent(event);
  switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Home:
    case Qt::Key_End:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      GoTo(picture_->Next(current_, event->key()));
      Announce(*this, CurrentText());
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
      Q_EMIT Chosen(current_.row, current_.col);
      break;
    default:
      QWidget::keyPressEvent(event);
  }
}

void PictureView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || picture_ == nullptr || IsEmpty()) return;
  const auto element = picture_->ElementAt(event->position());
  if (!element) return;
  GoTo(*element);
  Q_EMIT Chosen(element->row, element->col);
}

void PictureView::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  update();
}

void PictureView::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
}

}  // namespace qmx
