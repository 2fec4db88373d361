// SPDX-License-Identifier: MIT
#pragma once

#include <limits>
#include <string_view>

namespace qmx {

/// What has been proved about one computed number v: the exact value x of what it stands for lies
/// in lower..upper, and |v - x| <= relativeError·|v|. Nothing has been proved by default. For v = 0
/// the relative error is 0 where x is zero, and infinite otherwise.
struct ElementProof {
  double lower = -std::numeric_limits<double>::infinity();
  double upper = std::numeric_limits<double>::infinity();
  double relativeError = std::numeric_limits<double>::infinity();

  /// False where the exact value may be anything.
  bool IsEnclosed() const {
    return lower > -std::numeric_limits<double>::infinity() ||
           upper < std::numeric_limits<double>::infinity();
  }
};

/// Significant digits of a cell: in wide and in narrow grids.
inline constexpr int kWideDigits = 15;
inline constexpr int kNarrowDigits = 7;
/// Significant digits that tell every double from the next.
inline constexpr int kDoubleDigits = 17;

// k digits of a number hold when it differs from the exact value by less than one unit of its k-th
// significant digit. The rule is applied to the number as it is written, so that its rounding to
// the digits shown counts as well. Zeros at the end that a text leaves out count as written: of
// "0.5" there hold 15 digits where the exact value is 0.5. A zero has no significant digit: all of
// its digits hold where the exact value is zero, and none otherwise.
//
// Both functions round against the claim: they may tell a digit too few, never one too many.

/// How many digits of a computed number hold, 0 to kDoubleDigits.
int HeldDigits(double computed, const ElementProof& proof);

/// How many digits of the text that shows a computed number hold, 0 to `most`, the number of
/// significant digits that the conversion writes at the most (17 or fewer). The text is as CStr,
/// CStrSingle or Str write it; one that is no number holds none.
///   "0.333333333333333", exact value 1/3, most = 15 -> 15   "0.333333333333334" -> 14
///   "0.3333333", exact value 1/3, most = 7 -> 7             "0", exact value 1e-50 -> 0
int HeldDigits(std::string_view shown, int most, double computed, const ElementProof& proof);

}  // namespace qmx
