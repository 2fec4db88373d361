// SPDX-License-Identifier: MIT
#pragma once

#include "derivation/characteristic.h"
#include "derivation/derivation.h"

namespace qmx {

/// Encloses the largest root of a polynomial all of whose roots are real and positive, by halving.
/// How many roots lie above a number is told exactly by the signs of the coefficients about it
/// (Descartes' rule, which is exact where all roots are real), however close together they are.
class LargestRoot {
 public:
  /// `isReversed`: the polynomial whose roots are the reciprocals.
  LargestRoot(const RationalPolynomial& polynomial, bool isReversed, const DerivationLook& look);

  /// Halves the enclosure until it is narrower than 2^-bits of the root.
  void Narrow(int bits);
  const Rational& Lower() const { return lower_; }
  const Rational& Upper() const { return upper_; }

  /// How many roots lie above a number, each as often as it is one.
  int CountAbove(const Rational& number) const;

 private:
  void FindPower();

  WholePolynomial polynomial_;
  DerivationLook look_;
  Rational lower_;
  Rational upper_;  ///< No root lies above; the largest one lies above lower_.
  int bits_ = 0;
};

}  // namespace qmx
