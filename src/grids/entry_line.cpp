// SPDX-License-Identifier: MIT
#include "grids/entry_line.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

#include "grids/announcer.h"

namespace qmx {

EntryLine::EntryLine(QWidget* parent) : QLabel(parent) {
  setObjectName("lblEntry");
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  setAlignment(Qt::AlignLeft | Qt::AlignTop);
  // A long text must not make the window wider.
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  KeepRoom();
}

void EntryLine::KeepRoom() {
  constexpr int kLines = 2;
  setFixedHeight(kLines * fontMetrics().lineSpacing());
}

void EntryLine::ShowElement(const QString& element, const QString& note) {
  setText(note.isEmpty() ? element : element + ": " + note);
}

void EntryLine::ShowRefusal(const QString& refusal) {
  setText(refusal);
  Announce(*this, refusal);
}

// A text of two parts is divided between them, lest a number be torn apart at its point.
void EntryLine::paintEvent(QPaintEvent* event) {
  const int end = static_cast<int>(text().indexOf(": ")) + 1;
  const QString first = text().left(end);
  const QString second = text().mid(end + 1);
  const QFontMetrics metrics = fontMetrics();
  const auto fits = [&](const QString& line) { return metrics.horizontalAdvance(line) <= width(); };
  if (end == 0 || fits(text()) || !fits(first) || !fits(second)) {
    QLabel::paintEvent(event);
    return;
  }
  QPainter painter(this);
  style()->drawItemText(&painter, rect(), Qt::AlignLeft | Qt::AlignTop, palette(), isEnabled(),
                        first + '\n' + second, foregroundRole());
}

void EntryLine::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) KeepRoom();
}

}  // namespace qmx
