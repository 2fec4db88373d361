// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "derivation/document.h"
#include "derivation/traced.h"

// How the numbers of a derivation are written.

namespace qmx {

/// An exact number of which numerator, denominator or radicand has more digits is not written.
inline constexpr int kMostExactDigits = 40;

ExactNumber ExactOf(const Rational& value, int mostDigits = kMostExactDigits);
/// The value of coefficient · √square with a radicand free of squares; not known where it cannot
/// be split into such within a moment.
ExactNumber ExactOf(const TracedRoot& value, int mostDigits = kMostExactDigits);

/// How many leading characters of a text hold: up to the last digit of whose unit it is off by no
/// more than a half. All of them where it is the exact value rounded to the digits of a grid.
///   "0.333333333333334" for 1/3 -> 16   "0" for 0 -> 1   "5E-17" for 0 -> 0
std::size_t HeldCharacters(std::string_view decimal, const Rational& exact);

ShownNumber Show(const Traced& number);
ShownNumber Show(const TracedRoot& number);
/// A number that the program never computed: it is exact alone or, where it has too many digits,
/// rounded.
ShownNumber ShowExact(const Rational& value);
ShownNumber ShowExact(int whole);

/// True if both the decimal and the exact value, where it is known, are the whole number.
bool IsJust(const Traced& number, int whole);
/// True if it is to be read as negative: a sign that both of its forms have.
bool IsNegative(const Traced& number);

}  // namespace qmx
