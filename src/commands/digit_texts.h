// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "commands/digit_keeper.h"

namespace qmx {

// What is told about the digits of results, in words.

/// The place of a slot's matrix among those that a finding about its result has.
std::size_t FindingIndex(Slot slot);

/// The line below the grid of a result, or of A where it is a multiple or a shift: "All digits
/// hold", "At least 9 digits hold; fewest at row 3, column 4; condition number about 10^5", "Not
/// checked yet". Empty where there is nothing to tell.
std::string DigitLine(const Workspace& workspace, Slot slot, const DigitStanding& standing,
                      bool wide);

/// "12 digits hold", "1 digit holds", "No digit is proved".
std::string HeldText(int digits);

/// What is known of a cell: its digits, and between which numbers the exact value lies. Two lines.
std::string CellDigitTip(const CellProofs& cells, int row, int col, std::string_view shown,
                         int most);

/// A number or a verdict beside its label on the main window.
struct ScalarDigits {
  std::string text;          ///< "9 digits hold", "proved", "not checked"; empty for nothing.
  std::string toolTip;       ///< The same at more length.
  int held = kDoubleDigits;  ///< How many digits of the number are not to be shown in grey.
};
/// `shown` is what the label says.
ScalarDigits TellScalar(const Workspace& workspace, Result result, const DigitStanding& standing,
                        std::string_view shown);

}  // namespace qmx
