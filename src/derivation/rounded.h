// SPDX-License-Identifier: MIT
#pragma once

#include <arb.h>

#include <string>

#include "derivation/document.h"
#include "derivation/rational.h"

// Exact values as decimals that the program never computed, of which every digit holds.

namespace qmx {

/// A value rounded to the 15 digits of a grid, halves away from zero, as a grid writes it; of any
/// magnitude.  1/3 -> "0.333333333333333"   1/30 -> "3.33333333333333E-02"   10^400 -> "1E+400"
std::string RoundedText(const Rational& value);

/// The same for a value of which an enclosure is known; empty where that is too wide to tell.
std::string RoundedText(const arb_t enclosure);

/// An exact value and its rounded decimal.
ShownNumber ShowRounded(const Rational& value);
/// A decimal of which every digit holds; an empty one for an empty text.
ShownNumber ShowDigits(const std::string& text);

}  // namespace qmx
