// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractScrollArea>
#include <QAction>
#include <QList>
#include <QObject>
#include <QPointer>

namespace qmx {

/// How large the texts of all grids and of the results list are, in percent of the desktop's own
/// size. One size for all of them: what is compared stands side by side.
class Zoom : public QObject {
  Q_OBJECT

 public:
  Zoom();

  int Percent() const { return percent_; }
  /// Takes the step nearest to a size.
  void Set(int percent);
  /// Ctrl+plus, Ctrl+minus and Ctrl+0: entries for menus, which serve in all windows attached.
  const QList<QAction*>& Entries() const { return entries_; }
  /// Gives a view this size from now on; the keys, and Ctrl with the wheel, serve in its window.
  void Attach(QWidget& window, QAbstractScrollArea& view);

 Q_SIGNALS:
  void Changed(int percent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Step(int steps);
  void Apply(QAbstractScrollArea& view) const;

  int percent_ = 100;
  int wheel_ = 0;  ///< What the wheel has turned since the last step.
  QList<QAction*> entries_;
  QList<QPointer<QAbstractScrollArea>> views_;
};

}  // namespace qmx
