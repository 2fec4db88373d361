// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace qmx {

/// How a scalar result (determinant, trace) is shown beside its name. The standard conversion with
/// the sign's place in front; a number in exponent form has its mantissa rounded to 10 decimals,
/// halves to even. A rounded mantissa of 10 stays as it is.
///   -0.5 -> "-.5"   1/3 -> " .333333333333333"   1.23456789012346e17 -> " 1.2345678901E+17"
///   9.99999999999e20 -> " 10E+20"
std::string ScalarText(double value);

}  // namespace qmx
