// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

namespace qmx {

/// A part of the real line with marks at round numbers.
struct NumberLine {
  double low = 0;
  double high = 0;
  double step = 0;  ///< From one mark to the next: 1, 2 or 5 times a power of ten.
  std::vector<double> marks;
};

/// The part of the line that shows these numbers and 0, with at most `most` marks, at least 3 of
/// which are asked for. It is never of no length.
NumberLine NumberLineFor(const std::vector<double>& numbers, int most);

}  // namespace qmx
