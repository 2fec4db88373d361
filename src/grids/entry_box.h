#pragma once

#include <QLineEdit>

namespace qmx {

/// True for the characters that numbers are typed with: digits, "+", "-", ".", "E" and "e".
bool IsAcceptedInCell(QChar character);

/// The single-line box that is laid over a cell, `txtDataEntry`. It takes only the characters that
/// numbers are typed with; Backspace, Enter and Escape do nothing in it. Arrows leave the cell.
class EntryBox : public QLineEdit {
  Q_OBJECT

 public:
  explicit EntryBox(QWidget* parent);

 Q_SIGNALS:
  void ArrowPressed(int key);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace qmx
