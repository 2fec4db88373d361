// SPDX-License-Identifier: MIT
#include "grids/entry_box.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <tuple>

#include "grids/one_line.h"

namespace qmx {
namespace {

/// The name of a key that does nothing; empty for any other.
QString DiscardedKey(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Backspace:
      return QStringLiteral("Backspace");
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return QStringLiteral("Enter");
    case Qt::Key_Escape:
      return QStringLiteral("Escape");
    default:
      break;
  }
  const QString text = event.text();
  const bool isDiscarded =
      !text.isEmpty() && text.front().isPrint() && !IsAcceptedInCell(text.front());
  return isDiscarded ? text : QString();
}

bool SelectsText(const QKeyEvent& event) {
  if (event.matches(QKeySequence::SelectAll)) return true;
  const auto held = event.modifiers() & ~(Qt::KeypadModifier | Qt::ControlModifier);
  if (held != Qt::ShiftModifier) return false;
  const bool isArrow = event.key() >= Qt::Key_Left && event.key() <= Qt::Key_Down;
  return isArrow || event.key() == Qt::Key_Home || event.key() == Qt::Key_End ||
         event.key() == Qt::Key_PageUp || event.key() == Qt::Key_PageDown;
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
  TakeOneLine(*this, IsAcceptedInCell, tr("A cell holds one number."));
  hide();
}

void EntryBox::keyPressEvent(QKeyEvent* event) {
  const auto held = event->modifiers() & ~Qt::KeypadModifier;
  const bool isArrow = event->key() >= Qt::Key_Left && event->key() <= Qt::Key_Down;
  if (isArrow && held == Qt::NoModifier) {
    Q_EMIT ArrowPressed(event->key());
  } else if (event->matches(QKeySequence::Copy)) {
    Q_EMIT CopyRequested();
  } else if (event->matches(QKeySequence::Paste)) {
    Q_EMIT PasteRequested();
  } else if (SelectsText(*event)) {
    SelectTextOrCells(event);
  } else if (const QString discarded = DiscardedKey(*event); !discarded.isEmpty()) {
    Q_EMIT KeyRefused(discarded);
  } else {
    QLineEdit::keyPressEvent(event);
  }
}

void EntryBox::SelectTextOrCells(QKeyEvent* event) {
  const auto state = [this] {
    return std::tuple(cursorPosition(), selectionStart(), selectionLength());
  };
  const auto before = state();
  QLineEdit::keyPressEvent(event);
  event->accept();
  if (state() == before) Q_EMIT SelectionKeyPressed(*event);
}

// Files are for the window behind the box.
void EntryBox::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) {
    event->ignore();
  } else {
    QLineEdit::dragEnterEvent(event);
  }
}

// The line edit's own menu would copy and paste past the signals.
void EntryBox::contextMenuEvent(QContextMenuEvent* event) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto add = [this, menu](const char* name, const QString& text,
                                QKeySequence::StandardKey key, bool enabled, auto slot) {
    QAction* entry = menu->addAction(text);
    entry->setObjectName(name);
    entry->setShortcut(key);
    entry->setShortcutVisibleInContextMenu(true);
    entry->setEnabled(enabled);
    connect(entry, &QAction::triggered, this, slot);
  };
  add("mnuUndo", tr("&Undo"), QKeySequence::Undo, isUndoAvailable(), &EntryBox::undo);
  add("mnuRedo", tr("&Redo"), QKeySequence::Redo, isRedoAvailable(), &EntryBox::redo);
  menu->addSeparator();
  add("mnuCut", tr("Cu&t"), QKeySequence::Cut, hasSelectedText(), &EntryBox::cut);
  add("mnuCopyText", tr("&Copy"), QKeySequence::Copy, true, &EntryBox::CopyRequested);
  add("mnuPasteText", tr("&Paste"), QKeySequence::Paste, true, &EntryBox::PasteRequested);
  add("mnuSelectText", tr("&Select text"), QKeySequence::SelectAll, !text().isEmpty(),
      &EntryBox::selectAll);
  Q_EMIT MenuOpening(menu);
  menu->popup(event->globalPos());
}

void EntryBox::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  const bool byTab =
      event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
  if (byTab) Q_EMIT LeftByTab();
}

void EntryBox::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  QPainter painter(this);
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
  painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

}  // namespace qmx
