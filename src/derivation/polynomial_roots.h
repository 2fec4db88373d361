// SPDX-License-Identifier: MIT
#pragma once

#include <acb.h>

#include <string>
#include <vector>

#include "derivation/characteristic.h"
#include "derivation/derivation.h"

namespace qmx {

/// Complex numbers with their errors.
class Enclosures {
 public:
  explicit Enclosures(int count) : count_(count), values_(_acb_vec_init(count)) {}
  Enclosures(const Enclosures&) = delete;
  Enclosures& operator=(const Enclosures&) = delete;
  ~Enclosures() { _acb_vec_clear(values_, count_); }
  int Count() const { return count_; }
  acb_struct* Get() { return values_; }
  acb_struct* At(int k) { return values_ + k; }

 private:
  int count_;
  acb_struct* values_;
};

/// All roots of a polynomial without multiple ones, each enclosed apart from the others and to at
/// least so many bits: the real ones in ascending order, then the pairs, each with the one above
/// the real axis first.
void EncloseRoots(const RationalPolynomial& polynomial, slong bits, Enclosures& roots);

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
  /// Decimals of which every digit holds; `imaginary`, above zero, is empty for a real root.
  std::string real;
  std::string imaginary;

  bool IsPair() const { return !imaginary.empty(); }
};

/// The roots of an irreducible polynomial, the real ones in ascending order before the others.
std::vector<FoundRoot> RootsOf(const RationalPolynomial& irreducible, const DerivationLook& look);

}  // namespace qmx
