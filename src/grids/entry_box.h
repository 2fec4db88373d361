// SPDX-License-Identifier: MIT
#pragma once

#include <QLineEdit>
#include <QMenu>

namespace qmx {

/// True for the characters that numbers are typed with: digits, "+", "-", ".", "E" and "e".
bool IsAcceptedInCell(QChar character);

/// The single-line box that is laid over a cell, `txtDataEntry`. It takes only the characters that
/// numbers are typed with; Backspace, Enter and Escape do nothing in it. Arrows leave the cell.
/// Keys that select text and find no more text to select are passed on, to select cells.
class EntryBox : public QLineEdit {
  Q_OBJECT

 public:
  explicit EntryBox(QWidget* parent);

 Q_SIGNALS:
  void ArrowPressed(int key);
  /// A key that would select text and changed nothing.
  void SelectionKeyPressed(const QKeyEvent& event);
  /// The keys, and the entries of its menu, that copy and paste.
  void CopyRequested();
  void PasteRequested();
  /// A key that does nothing here: its character, or "Backspace", "Enter" or "Escape".
  void KeyRefused(const QString& key);
  /// The keyboard went on to the next or previous control.
  void LeftByTab();
  /// Its menu is about to open: others may add what they have to offer.
  void MenuOpening(QMenu* menu);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void SelectTextOrCells(QKeyEvent* event);
};

}  // namespace qmx
