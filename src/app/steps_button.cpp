// SPDX-License-Identifier: MIT
#include "app/steps_button.h"

#include "app/drawn_icon.h"
#include "commands/steps_question.h"
#include "grids/qt_text.h"

namespace qmx {
namespace {

QString NameOf(Result result) {
  switch (result) {
    case kResultDeterminant:
      return "cmdStepsDeterminant";
    case kResultTrace:
      return "cmdStepsTrace";
    case kResultDefiniteness:
      return "cmdStepsDefiniteness";
    default:
      return "cmdStepsSymmetry";
  }
}

}  // namespace

StepsButton::StepsButton(Result result, const QString& name, QWidget* parent)
    : QPushButton(tr("St&eps..."), parent), result_(result) {
  setObjectName(name);
  setAccessibleName(tr("Steps: %1").arg(ToQString(DerivationTitle(result))));
  setAutoDefault(true);  // Enter presses it, as Space does.
  Enable(tr("This has not been computed"));
}

void StepsButton::Enable(const QString& why) {
  // Left to itself the keyboard would go on to the next control: another Space would then start
  // another task. The one before finds this result again, or shows it in another way.
  if (!why.isEmpty() && window()->focusWidget() == this) focusPreviousChild();
  setEnabled(why.isEmpty());
  setToolTip(why.isEmpty() ? tr("Shows how this came about, step by step") : why);
}

StepsButton* MakeScalarStepsButton(Result result, QWidget* parent) {
  auto* button = new StepsButton(result, NameOf(result), parent);
  button->setText({});
  button->setIcon(DrawnIcon("steps"));
  button->hide();
  return button;
}

}  // namespace qmx
