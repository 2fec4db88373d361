// SPDX-License-Identifier: MIT
#pragma once

#include <QFrame>
#include <QLabel>

#include "workspace/slot_table.h"

namespace qmx {

/// The name of a result. While there is no such result it is muted, but can still be read.
class ResultTitle final : public QLabel {
  Q_OBJECT

 public:
  ResultTitle(const QString& text, QWidget* parent);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void Mute();
};

/// The frame of a result: its dimensions and buttons. It leaves room in its upper left corner for
/// the result's title, which is muted while the frame is hidden, and keeps its place then.
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
