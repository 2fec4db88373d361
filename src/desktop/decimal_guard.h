// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "workspace/dialogs.h"

namespace qmx {

/// The user's regional setting of the decimal separator. No call reports a failure.
class RegionalSettings {
 public:
  RegionalSettings() = default;
  RegionalSettings(const RegionalSettings&) = delete;
  RegionalSettings& operator=(const RegionalSettings&) = delete;
  virtual ~RegionalSettings() = default;

  /// The separator as the system stores it; may be longer than one character.
  virtual std::string DecimalSeparator() = 0;
  virtual void SetDecimalSeparator(const std::string& separator) = 0;
};

/// The settings of the system that the program runs on.
///
/// On Windows the separator is the user's own setting, seen and changed for every program. On a
/// POSIX system it is what the locale of the environment (LC_ALL, LC_NUMERIC, LANG) says; nobody's
/// setting can be changed there, so setting "." makes this process alone work in the "C" numeric
/// locale, and setting the user's own separator brings back the user's numeric locale.
std::unique_ptr<RegionalSettings> SystemRegionalSettings();

/// Sees to it that "." is the decimal separator while the program runs.
class DecimalGuard {
 public:
  explicit DecimalGuard(RegionalSettings& settings) : settings_(settings) {}

  /// Keeps the user's separator as the saved one.
  void ReadSeparator();
  /// Makes "." the separator.
  void SetPoint();
  /// Writes the saved separator back, changed or not. To be called after ReadSeparator.
  void Restore();

  /// To be called once, before any window is shown. Reads the separator; where it is not exactly
  /// ".", asks the user's leave to change it for this run. False where the user declines: the
  /// program must then end, and nothing was changed.
  bool Check(Dialogs& dialogs);

  const std::string& SavedSeparator() const { return savedSeparator_; }

 private:
  RegionalSettings& settings_;
  std::string savedSeparator_;
};

}  // namespace qmx
