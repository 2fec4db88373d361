// SPDX-License-Identifier: MIT
#include "output/number_line.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

#include "base/number_text.h"

namespace qmx {
namespace {

/// The double next to it, which not every C library's power is.
double PowerOfTen(int exponent) {
  return ParseNumber("1e" + std::to_string(exponent)).value_or(std::numeric_limits<double>::max());
}

/// The least of 1, 2 and 5 times a power of ten that is not below a length.
double RoundStep(double length) {
  const double power = PowerOfTen(static_cast<int>(std::floor(std::log10(length))));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= length) return factor * power;
  }
  return 10 * power;
}

}  // namespace

NumberLine NumberLineFor(const std::vector<double>& numbers, int most) {
  double low = 0;
  double high = 0;
  for (const double number : numbers) {
    low = std::min(low, number);
    high = std::max(high, number);
  }
  if (low == high) high = 1;
  NumberLine line;
  // Halves first: the length of the whole may be beyond the largest number.
  const double length = (high / 2 - low / 2) / (std::max(2, most - 3) / 2.0);
  line.step = RoundStep(std::max(length, std::numeric_limits<double>::min()));
  const double first = std::floor(low / line.step);
  const double last = std::ceil(high / line.step);
  const int steps = static_cast<int>(last - first);
  for (int i = 0; i <= steps; ++i) {
    const double mark = (first + i) * line.step;
    if (std::isfinite(mark)) line.marks.push_back(mark);
  }
  line.low = std::min(low, line.marks.front());
  line.high = std::max(high, line.marks.back());
  return line;
}

}  // namespace qmx
