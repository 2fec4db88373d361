// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>
#include <QLabel>

#include "workspace/slot_table.h"

namespace qmx {

/// The frame of a result: its dimensions and buttons. It stands beside the result's title, which is
/// muted while the frame is hidden, and keeps its place then.
class ResultFrame final : public QFrame {
  Q_OBJECT

 public:
  ResultFrame(Slot slot, QLabel* title, QWidget* parent);

  void setVisible(bool visible) override;

 protected:
  bool event(QEvent* event) override;

 private:
  void ShowTimesIfNeeded();

  QLabel* title_;
  QLabel* times_;
  QLabel* cols_;
};

}  // namespace qmx
