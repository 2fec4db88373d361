// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace qmx {

/// The line below an editor's grid, `lblEntry`: the current element with all its digits, and why a
/// key or a part of what was typed is not taken. It keeps room for two lines, so that a long
/// reason moves nothing.
class EntryLine : public QLabel {
  Q_OBJECT

 public:
  explicit EntryLine(QWidget* parent);

  /// Names the element; `note` says what of its text is not read, empty where all of it is.
  void ShowElement(const QString& element, const QString& note);
  /// Tells, and lets be heard, that a key was refused. It stands until an element is shown next.
  void ShowRefusal(const QString& refusal);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void KeepRoom();
};

}  // namespace qmx
