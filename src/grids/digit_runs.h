// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QString>
#include <vector>

namespace qmx {

/// A part of a text that is painted in one colour.
struct DigitRun {
  int start = 0;
  int length = 0;
  bool isProved = false;

  bool operator==(const DigitRun&) const = default;
};

/// The parts of a number's text of which `held` significant digits hold: sign, zeros in front and
/// exponent go with the first digit, the point with the digit before it. No part is empty.
///   "-12.34E+15", 3 -> "-12.3" proved, "4" not, "E+15" proved
///   "0.001234", 2 -> "0.0012" proved, "34" not       "12.5", 0 -> "12.5" not
std::vector<DigitRun> DigitRuns(const QString& text, int held);

/// The colour of digits that are not proved, beside proved ones of the colour `text` on a ground:
/// between the two, as far from one as from the other, but with a contrast of 3 to the text where
/// there is as much between text and ground.
QColor UnprovedColour(const QColor& text, const QColor& ground);

}  // namespace qmx
