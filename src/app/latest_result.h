// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QWidget>
#include <optional>

#include "grids/grid_window.h"
#include "workspace/slot_table.h"

namespace qmx {

/// The latest result as a small grid, `grdLatest`, on the main window: the cells of the result's
/// own window. A click on it, or Enter, asks for that.
class LatestResult final : public QWidget {
  Q_OBJECT

 public:
  explicit LatestResult(QWidget* parent);

  /// Shows the result of a window; null where there is none. It must be taken away before the
  /// window goes.
  void Show(const GridWindow* window, bool wide);
  /// The window whose result is on show.
  const GridWindow* Window() const { return window_; }
  /// Tells why the result no longer fits what it was computed from; nothing where it does.
  void ShowStale(const QString& why);

  QSize sizeHint() const override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 Q_SIGNALS:
  void Chosen(qmx::Slot slot);

 private:
  const GridWindow* window_ = nullptr;
  QLabel* title_;
  QLabel* stale_;
  MatrixGrid* grid_;
};

}  // namespace qmx
