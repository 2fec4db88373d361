// SPDX-License-Identifier: MIT
#include "derivation/polynomial_roots.h"

#include <acb.h>
#include <arb_fmpz_poly.h>

#include <utility>

#include "derivation/rounded.h"
#include "proof/ball.h"

namespace qmx {
namespace {

// Bits of precision: those to begin with, and those after which no more digits are found.
constexpr slong kFirstBits = 96;
constexpr slong kMostBits = 6144;

void LookAt(const DerivationLook& look) {
  if (look) look();
}

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
void EncloseRoots(const RationalPolynomial& polynomial, slong bits, Enclosures& roots) {
  WholePolynomial whole;
  fmpq_poly_get_numerator(whole.Get(), polynomial.Get());
  arb_fmpz_poly_complex_roots(roots.Get(), whole.Get(), 0, bits);
}

/// True if only even powers occur, so that with every root its negative is one.
bool IsEven(const RationalPolynomial& polynomial) {
  for (int k = 1; k <= polynomial.Degree(); k += 2) {
    if (!polynomial.Coefficient(k).IsZero()) return false;
  }
  return true;
}

/// True if a root of a real polynomial in even powers has the real part zero. The mirror image of
/// such a root is one, too; where no other one can be in the mirrored enclosure, it is the root
/// itself.
bool IsOnImaginaryAxis(Enclosures& roots, int k) {
  if (!arb_contains_zero(acb_realref(roots.At(k)))) return false;
  Enclosures mirrored(1);
  arb_neg(acb_realref(mirrored.At(0)), acb_realref(roots.At(k)));
  arb_set(acb_imagref(mirrored.At(0)), acb_imagref(roots.At(k)));
  for (int other = 0; other < roots.Count(); ++other) {
    if (other != k && acb_overlaps(mirrored.At(0), roots.At(other))) return false;
  }
  return true;
}

FoundRoot RationalRoot(const RationalPolynomial& linear) {
  FoundRoot root;
  root.kind = FoundRoot::Kind::kRational;
  root.center = RootOfLinear(linear);
  root.real = RoundedText(root.center);
  return root;
}

/// λ² + p·λ + q = 0  ->  -p/2 ± √(p²/4 - q)
std::vector<FoundRoot> QuadraticRoots(const RationalPolynomial& quadratic) {
  FoundRoot root;
  root.kind = FoundRoot::Kind::kQuadratic;
  root.center = quadratic.Coefficient(1);
  fmpq_div_2exp(root.center.Get(), root.center.Get(), 1);
  fmpq_mul(root.square.Get(), root.center.Get(), root.center.Get());
  fmpq_sub(root.square.Get(), root.square.Get(), quadratic.Coefficient(0).Get());
  fmpq_neg(root.center.Get(), root.center.Get());
  if (root.square.Sign() < 0) {
    Rational magnitude = root.square;
    fmpq_neg(magnitude.Get(), magnitude.Get());
    root.isPair = true;
    root.real = RoundedText(root.center);
    root.imaginary = RootText(Rational(), magnitude, true);
    return {root};
  }
  FoundRoot lower = root;
  lower.isUpper = false;
  lower.real = RootText(root.center, root.square, false);
  root.real = RootText(root.center, root.square, true);
  return {lower, root};
}

/// Writes the decimals of enclosed roots. False where more bits are needed.
bool WriteDecimals(Enclosures& enclosed, bool isEven, std::vector<FoundRoot>& found) {
  found.clear();
  bool isWhole = true;
  for (int k = 0; k < enclosed.Count(); ++k) {
    FoundRoot root;
    root.isPair = arb_is_zero(acb_imagref(enclosed.At(k))) == 0;
    const bool isOnAxis = root.isPair && isEven && IsOnImaginaryAxis(enclosed, k);
    root.real = isOnAxis ? "0" : RoundedText(acb_realref(enclosed.At(k)));
    if (root.isPair) root.imaginary = RoundedText(acb_imagref(enclosed.At(k)));
    isWhole = isWhole && !root.real.empty() && (!root.isPair || !root.imaginary.empty());
    // The other one of a pair comes next.
    if (root.isPair) ++k;
    found.push_back(std::move(root));
  }
  return isWhole;
}

}  // namespace

std::string RootText(const Rational& center, const Rational& square, bool isUpper) {
  Ball root;
  Ball sum;
  for (slong bits = kFirstBits; bits <= kMostBits; bits *= 2) {
    arb_set_fmpq(root, square.Get(), bits);
    arb_sqrt(root, root, bits);
    arb_set_fmpq(sum, center.Get(), bits);
    if (isUpper) {
      arb_add(sum, sum, root, bits);
    } else {
      arb_sub(sum, sum, root, bits);
    }
    std::string text = RoundedText(sum);
    if (!text.empty()) return text;
  }
  return {};
}

std::vector<FoundRoot> RootsOf(const RationalPolynomial& irreducible, const DerivationLook& look) {
  if (irreducible.Degree() == 1) return {RationalRoot(irreducible)};
  if (irreducible.Degree() == 2) return QuadraticRoots(irreducible);
  const bool isEven = IsEven(irreducible);
  std::vector<FoundRoot> found;
  for (slong bits = kFirstBits; bits <= kMostBits; bits *= 2) {
    LookAt(look);
    Enclosures enclosed(irreducible.Degree());
    EncloseRoots(irreducible, bits, enclosed);
    if (WriteDecimals(enclosed, isEven, found)) break;
  }
  return found;
}

}  // namespace qmx
