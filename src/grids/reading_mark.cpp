// SPDX-License-Identifier: MIT
#include "grids/reading_mark.h"

#include <QAbstractScrollArea>
#include <QEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>
#include <algorithm>

#include "grids/announcer.h"

namespace qmx {
namespace {

constexpr int kDarkBelow = 128;  // Lightness under which a background counts as dark.

/// Told from the text's colour and readable on a light and on a dark ground.
QColor MarkColour(const QPalette& palette) {
  const bool dark = palette.color(QPalette::Base).lightness() < kDarkBelow;
  return dark ? QColor(0xff, 0xb3, 0x47) : QColor(0xb3, 0x4a, 0x00);
}

/// What the note lies on: all that scrolls together with the field, else the window.
QWidget* GroundOf(QWidget* field) {
  QWidget* ground = field->parentWidget();
  while (!ground->isWindow()) {
    QWidget* above = ground->parentWidget();
    if (qobject_cast<QAbstractScrollArea*>(above->parentWidget()) != nullptr) break;
    ground = above;
  }
  return ground;
}

}  // namespace

void MarkReading(QLineEdit& field, const Reading& reading) { new ReadingMark(&field, reading); }

ReadingMark::ReadingMark(QLineEdit* field, Reading reading)
    : QWidget(field), field_(field), reading_(std::move(reading)) {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setGeometry(field->rect());
  seen_ = field->text();
  note_ = reading_(seen_);
  hide();
  field->installEventFilter(this);
  connect(field, &QLineEdit::textChanged, this, &ReadingMark::Check);
}

ReadingMark::~ReadingMark() { delete label_.data(); }

void ReadingMark::Check() {
  if (field_->text() == seen_) return;
  seen_ = field_->text();
  const QString note = reading_(seen_);
  if (note == note_) return;
  note_ = note;
  setVisible(!note_.isEmpty());
  // Without a description of its own the field is described by its tool tip.
  field_->setAccessibleDescription(note_);
  if (note_.isEmpty() || !field_->hasFocus()) {
    HideNote();
    return;
  }
  ShowNote();
  Announce(*field_, note_);
}

bool ReadingMark::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::Resize:
      setGeometry(field_->rect());
      break;
    case QEvent::Paint:
      // A command writes into fields without a word to anybody.
      Check();
      break;
    case QEvent::FocusIn:
      if (!note_.isEmpty()) ShowNote();
      break;
    case QEvent::FocusOut:
    case QEvent::Hide:
      HideNote();
      break;
    default:
      break;
  }
  return QWidget::eventFilter(watched, event);
}

void ReadingMark::ShowNote() {
  if (label_ == nullptr) {
    label_ = new QLabel(GroundOf(field_));
    label_->setObjectName("lblReadAs");
    label_->setTextFormat(Qt::PlainText);
    label_->setAttribute(Qt::WA_TransparentForMouseEvents);
    label_->setAutoFillBackground(true);
    label_->setMargin(4);
    label_->setFrameStyle(QFrame::Box | QFrame::Plain);
  }
  QPalette colours = QToolTip::palette();
  colours.setColor(QPalette::Window, colours.color(QPalette::ToolTipBase));
  colours.setColor(QPalette::WindowText, colours.color(QPalette::ToolTipText));
  label_->setPalette(colours);
  label_->setText(note_);
  label_->adjustSize();
  const QWidget* ground = label_->parentWidget();
  const QRect field(field_->mapTo(ground, QPoint(0, 0)), field_->size());
  const int left = std::clamp(field.left(), 0, std::max(0, ground->width() - label_->width()));
  const bool below = field.bottom() + 1 + label_->height() <= ground->height();
  label_->move(left, below ? field.bottom() + 1 : field.top() - label_->height());
  label_->show();
  label_->raise();
}

void ReadingMark::HideNote() {
  if (label_ != nullptr) label_->hide();
}

void ReadingMark::paintEvent([[maybe_unused]] QPaintEvent* event) {
  constexpr int kStep = 3;
  constexpr int kInset = 3;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(MarkColour(field_->palette()), 1.5));
  const int low = height() - kInset;
  QPainterPath line(QPointF(kInset, low));
  for (int x = kInset + kStep, up = 1; x < width() - kInset; x += kStep, up = 1 - up)
    line.lineTo(x, low - up * kStep);
  painter.drawPath(line);
}

}  // namespace qmx
