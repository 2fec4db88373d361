#include "grids/entry_box.h"

#include <QKeyEvent>
#include <QPainter>
#include <QRegularExpressionValidator>

namespace qmx {
namespace {

bool IsDiscarded(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Backspace:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
      return true;
    default:
      break;
  }
  const QString text = event.text();
  return !text.isEmpty() && text.front().isPrint() && !IsAcceptedInCell(text.front());
}

}  // namespace

bool IsAcceptedInCell(QChar character) {
  return QStringLiteral("0123456789+-.Ee").contains(character);
}

EntryBox::EntryBox(QWidget* parent) : QLineEdit(parent) {
  setObjectName("txtDataEntry");
  setFrame(false);
  setAlignment(Qt::AlignRight);
  setTextMargins(2, 0, 2, 0);
  // What does not come by a key, such as pasted text, is held to the same characters.
  setValidator(new QRegularExpressionValidator(QRegularExpression("[0-9+\\-.Ee]*"), this));
  hide();
}

void EntryBox::keyPressEvent(QKeyEvent* event) {
  const auto held = event->modifiers() & ~Qt::KeypadModifier;
  const bool isArrow = event->key() >= Qt::Key_Left && event->key() <= Qt::Key_Down;
  if (isArrow && held == Qt::NoModifier) {
    Q_EMIT ArrowPressed(event->key());
  } else if (!IsDiscarded(*event)) {
    QLineEdit::keyPressEvent(event);
  }
}

void EntryBox::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  QPainter painter(this);
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
  painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

}  // namespace qmx
