// SPDX-License-Identifier: MIT
#include "desktop/decimal_guard.h"

namespace qmx {

namespace {

constexpr const char* kPoint = ".";

// The lines are separated by a carriage return each. The box speaks of the comma whatever the
// separator is: to the user, anything but the point is the other convention.
Message CommaWarning() {
  return {
      "Proper operation of this application requires the use of the DECIMAL POINT.\r"
      "Your system is currently using the DECIMAL COMMA.\r"
      "\r"
      "Do you wish to temporarily change this system setting to decimal point?\r"
      "(Upon exiting, this application will restore your setting.)\r"
      "(See the help file on how to change this setting by hand.)\r"
      "\r"
      "Press YES to change.",
      Icon::kCritical, Buttons::kYesNoCancel, "Decimal Comma Warning!"};
}

}  // namespace

void DecimalGuard::ReadSeparator() { savedSeparator_ = settings_.DecimalSeparator(); }

void DecimalGuard::SetPoint() { settings_.SetDecimalSeparator(kPoint); }

void DecimalGuard::Restore() { settings_.SetDecimalSeparator(savedSeparator_); }

bool DecimalGuard::Check(Dialogs& dialogs) {
  ReadSeparator();
  if (savedSeparator_ == kPoint) return true;
  if (dialogs.ShowMessage(CommaWarning()) != Answer::kYes) return false;
  SetPoint();
  return true;
}

}  // namespace qmx
