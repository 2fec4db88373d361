// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "derivation/characteristic.h"
#include "derivation/derivation.h"

namespace qmx {

/// A root of an irreducible polynomial. Of a pair of complex ones it stands for both.
struct FoundRoot {
  /// How it can be told exactly.
  enum class Kind {
    kRational,     ///< center
    kQuadratic,    ///< center ± √|square|, times i where the square is negative
    kHigherDegree  ///< by its decimals alone
  };
  Kind kind = Kind::kHigherDegree;
  Rational center;
  Rational square;
  bool isUpper = true;  ///< + for a real one of a quadratic polynomial.
  bool isPair = false;
  /// Decimals of which every digit holds; empty where they are not found.
  std::string real;
  std::string imaginary;  ///< Above zero, of a pair alone.

  bool HasDecimals() const { return !real.empty() && !(isPair && imaginary.empty()); }
};

/// center ± √square in decimals of which every digit holds; empty where they are not found.
std::string RootText(const Rational& center, const Rational& square, bool isUpper);

/// The roots of an irreducible polynomial, the real ones in ascending order before the others.
/// Where they are too close together to be told apart, as many unknown ones as its degree, without
/// decimals.
std::vector<FoundRoot> RootsOf(const RationalPolynomial& irreducible, const DerivationLook& look);

}  // namespace qmx
