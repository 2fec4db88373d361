// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QObject>
#include <QPoint>
#include <QSize>
#include <QWidget>

namespace qmx {

/// Remembers from run to run where a person put a window and how large it was made, under the
/// window's name. A place or size that the program chose is not remembered: the next matrix may
/// need another one.
class WindowMemory : public QObject {
  Q_OBJECT

 public:
  /// Brings a window that was not shown yet to where it was put before, on a screen that is there
  /// now, and gives it the size it was made. False where it was never put anywhere; it may have
  /// been given its size all the same.
  bool Recall(QWidget& window);
  /// The place and size that a window has now are the program's choice. From now on what a person
  /// makes of them is kept when the window goes from the screen.
  void Watch(QWidget& window);
  /// Keeps what is to be kept of a window.
  void Keep(const QWidget& window) const;

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Choice {
    QPoint place;
    QSize size;
  };
  QHash<const QObject*, Choice> chosen_;  ///< By the program.
};

}  // namespace qmx
