// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QPushButton>
#include <QWidget>

#include "grids/shown_digits.h"

namespace qmx {

/// The line below a grid that tells how many digits hold, `lblDigits`, with the button
/// `cmdCheckDigits` where a check waits to be asked for or can be stopped.
class DigitsLine : public QWidget {
  Q_OBJECT

 public:
  explicit DigitsLine(QWidget* parent);

  /// True if the line needs more or less room than before.
  bool Show(const ShownDigits& digits);
  bool IsChecking() const { return isChecking_; }

 Q_SIGNALS:
  /// The user wants the digits to be checked, or wants that no longer.
  void Asked(bool wanted);

 private:
  QLabel* text_;
  QPushButton* check_;
  bool isChecking_ = false;
};

}  // namespace qmx
