// SPDX-License-Identifier: MIT
#pragma once

#include <QPushButton>

#include "workspace/result_table.h"

namespace qmx {

/// The button that shows how a result came about: `cmdSteps` in the window of a result, and
/// `cmdStepsDeterminant` and its kin, with an icon, on the main window.
class StepsButton : public QPushButton {
  Q_OBJECT

 public:
  StepsButton(Result result, const QString& name, QWidget* parent);

  Result Of() const { return result_; }
  /// Enables it where nothing speaks against that; else its tool tip tells what does.
  void Enable(const QString& why);

 private:
  Result result_;
};

/// The one that stands beside a number or a verdict.
StepsButton* MakeScalarStepsButton(Result result, QWidget* parent);

}  // namespace qmx
