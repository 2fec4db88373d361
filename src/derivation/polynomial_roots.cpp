// SPDX-License-Identifier: MIT
#include "derivation/polynomial_roots.h"

#include <acb.h>
#include <acb_poly.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>
#include <utility>

#include "derivation/rounded.h"
#include "proof/ball.h"

namespace qmx {
namespace {

// Bits of precision: those to begin with, and those after which no more digits are found.
constexpr slong kFirstBits = 96;
constexpr slong kMostBits = 6144;
// Steps of the iteration for all roots between two looks, and how often they are done before more
// bits are taken.
constexpr slong kSteps = 8;
constexpr int kMostRounds = 8;

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

/// A polynomial with coefficients rounded to so many bits.
class ComplexPolynomial {
 public:
  ComplexPolynomial(const WholePolynomial& polynomial, slong bits) {
    acb_poly_init(value_);
    acb_poly_set_fmpz_poly(value_, polynomial.Get(), bits);
  }
  ComplexPolynomial(const ComplexPolynomial&) = delete;
  ComplexPolynomial& operator=(const ComplexPolynomial&) = delete;
  ~ComplexPolynomial() { acb_poly_clear(value_); }
  const acb_poly_struct* Get() const { return value_; }

 private:
  acb_poly_t value_;
};

/// Puts `count` points in equal distances onto a circle about 0.
void PlaceOnCircle(double logOfRadius, double firstAngle, int count, acb_struct* points) {
  const double power = std::floor(logOfRadius / std::numbers::ln2);
  const double radius = std::exp(logOfRadius - power * std::numbers::ln2);
  for (int k = 0; k < count; ++k) {
    const double angle = firstAngle + 2 * std::numbers::pi * k / count;
    acb_set_d_d(points + k, radius * std::cos(angle), radius * std::sin(angle));
    acb_mul_2exp_si(points + k, points + k, static_cast<slong>(power));
  }
}

/// Where the search for the roots begins: on the circles that the convex hull of the logarithms of
/// the coefficients tells (Bini, Numerical computation of polynomial zeros by means of Aberth's
/// method, 1996), so that roots of any magnitude are close to their places. Zero is no root.
void PlaceStarts(const WholePolynomial& polynomial, Enclosures& roots) {
  const auto logOf = [&polynomial](int k) {
    Whole magnitude;
    fmpz_abs(magnitude.Get(), fmpz_poly_get_coeff_ptr(polynomial.Get(), k));
    return fmpz_dlog(magnitude.Get());
  };
  for (int from = 0, next = 0; from < roots.Count(); from = next) {
    double steepest = 0;
    next = from;
    for (int to = from + 1; to <= roots.Count(); ++to) {
      if (fmpz_is_zero(fmpz_poly_get_coeff_ptr(polynomial.Get(), to)) != 0) continue;
      const double slope = (logOf(to) - logOf(from)) / (to - from);
      if (next != from && slope < steepest) continue;
      steepest = slope;
      next = to;
    }
    // Neither mirror images nor side by side on circles that are nearly the same.
    PlaceOnCircle(-steepest, 0.7 + from, next - from, roots.At(from));
  }
}

/// Some steps of the iteration for all roots at once (Durand and Kerner). True once each is
/// enclosed apart from the others, the real ones on the axis.
bool Refine(const WholePolynomial& polynomial, slong bits, Enclosures& roots) {
  const ComplexPolynomial rounded(polynomial, bits);
  const slong apart = acb_poly_find_roots(roots.Get(), rounded.Get(), roots.Get(), kSteps, bits);
  if (apart < roots.Count() || acb_poly_validate_real_roots(roots.Get(), rounded.Get(), bits) == 0)
    return false;
  for (int k = 0; k < roots.Count(); ++k) {
    if (arb_contains_zero(acb_imagref(roots.At(k))) != 0) arb_zero(acb_imagref(roots.At(k)));
  }
  _acb_vec_sort_pretty(roots.Get(), roots.Count());
  return true;
}

bool RefineInRounds(const WholePolynomial& polynomial, slong bits, const DerivationLook& look,
                    Enclosures& roots) {
  for (int round = 0; round < kMostRounds; ++round) {
    LookAt(look);
    if (Refine(polynomial, bits, roots)) return true;
  }
  return false;
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

/// Writes the decimals of enclosed roots, the real ones first. False where more bits are needed.
bool WriteDecimals(Enclosures& enclosed, bool isEven, std::vector<FoundRoot>& found) {
  found.clear();
  std::vector<FoundRoot> pairs;
  bool isWhole = true;
  for (int k = 0; k < enclosed.Count(); ++k) {
    // The one above the axis stands for a pair.
    if (arb_is_negative(acb_imagref(enclosed.At(k))) != 0) continue;
    FoundRoot root;
    root.isPair = arb_is_zero(acb_imagref(enclosed.At(k))) == 0;
    const bool isOnAxis = root.isPair && isEven && IsOnImaginaryAxis(enclosed, k);
    root.real = isOnAxis ? "0" : RoundedText(acb_realref(enclosed.At(k)));
    if (root.isPair) root.imaginary = RoundedText(acb_imagref(enclosed.At(k)));
    isWhole = isWhole && root.HasDecimals();
    (root.isPair ? pairs : found).push_back(std::move(root));
  }
  std::ranges::move(pairs, std::back_inserter(found));
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
  WholePolynomial whole;
  fmpq_poly_get_numerator(whole.Get(), irreducible.Get());
  const bool isEven = IsEven(irreducible);
  Enclosures enclosed(irreducible.Degree());
  PlaceStarts(whole, enclosed);
  // These stay where they are not told apart.
  std::vector<FoundRoot> found(static_cast<std::size_t>(irreducible.Degree()));
  for (slong bits = kFirstBits; bits <= kMostBits; bits *= 2) {
    if (RefineInRounds(whole, bits, look, enclosed) && WriteDecimals(enclosed, isEven, found))
      break;
  }
  return found;
}

}  // namespace qmx
