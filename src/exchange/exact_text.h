// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "base/matrix.h"

namespace qmx {

// How numbers are written for other programs: so that the same double is read back.

/// Appends a number with the fewest digits that read back to it (15 where these do), the sign of a
/// negative zero included.
///   0.5 -> "0.5"   0.1+0.2 -> "0.30000000000000004"   -0.0 -> "-0"   1e20 -> "1E+20"
void AppendExact(std::string& text, double value, char decimalSign = '.');

/// Refuses a matrix with an element that is no finite number, and one without elements.
void CheckWritable(const Matrix& values);

}  // namespace qmx
