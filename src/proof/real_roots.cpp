// SPDX-License-Identifier: MIT
#include "proof/real_roots.h"

#include <arb_poly.h>
#include <flint/nmod_poly.h>
#include <flint/ulong_extras.h>

#include <algorithm>
#include <cmath>

namespace qmx {
namespace {

constexpr int kMostSteps = 100;
constexpr slong kFirstBits = 256;

class BallPolynomial {
 public:
  BallPolynomial(const WholePolynomial& whole, slong bits) {
    arb_poly_init(value_);
    arb_poly_set_fmpz_poly(value_, whole.Get(), bits);
  }
  BallPolynomial(const BallPolynomial&) = delete;
  BallPolynomial& operator=(const BallPolynomial&) = delete;
  ~BallPolynomial() { arb_poly_clear(value_); }
  const arb_poly_struct* Get() const { return value_; }

 private:
  arb_poly_t value_;
};

/// True where a polynomial has no multiple zero modulo some prime, and hence none at all.
bool IsSquareFreeModuloAPrime(const WholePolynomial& polynomial) {
  nmod_poly_t residues;
  nmod_poly_init(residues, n_nextprime(mp_limb_t{1} << 61, 0));
  fmpz_poly_get_nmod_poly(residues, polynomial.Get());
  const bool isSquareFree = nmod_poly_is_squarefree(residues) != 0;
  nmod_poly_clear(residues);
  return isSquareFree;
}

/// Decides with exact arithmetic.
bool IsZeroAt(const WholePolynomial& polynomial, const Ball& exact) {
  Ball value;
  Ball coefficient;
  for (slong k = fmpz_poly_degree(polynomial.Get()); k >= 0; --k) {
    arb_mul(value, value, exact, ARF_PREC_EXACT);
    arb_set_fmpz(coefficient, fmpz_poly_get_coeff_ptr(polynomial.Get(), k));
    arb_add(value, value, coefficient, ARF_PREC_EXACT);
  }
  return arb_is_zero(value);
}

}  // namespace

RealRoots::RealRoots(const CharacteristicPolynomial& polynomial, const Watch& watch)
    : watch_(watch), shift_(polynomial.shift), squareFree_(polynomial.coefficients) {
  fmpz_poly_one(repeated_.Get());
  if (IsSquareFreeModuloAPrime(squareFree_)) return;
  watch.Look();
  WholePolynomial derivative;
  fmpz_poly_derivative(derivative.Get(), squareFree_.Get());
  fmpz_poly_gcd(repeated_.Get(), squareFree_.Get(), derivative.Get());
  watch.Look();
  fmpz_poly_div(squareFree_.Get(), squareFree_.Get(), repeated_.Get());
}

/// log2 of the largest term at a number: where its terms cancel, the value loses so many bits.
double RealRoots::LogOfTerms(const Ball& at) const {
  const double log = LogOfMagnitude(at);
  double largest = 0;
  Ball coefficient;
  for (slong k = 0; k <= fmpz_poly_degree(squareFree_.Get()); ++k) {
    arb_set_fmpz(coefficient, fmpz_poly_get_coeff_ptr(squareFree_.Get(), k));
    if (arb_is_zero(coefficient)) continue;
    const double power = k == 0 ? 0 : static_cast<double>(k) * log;
    largest = std::max(largest, LogOfMagnitude(coefficient) + power);
  }
  return largest;
}

std::optional<RealRoot> RealRoots::Near(double start, slong bits) const {
  Ball from(start);
  arb_mul_2exp_si(from, from, shift_);
  if (IsZeroAt(squareFree_, from)) {
    return RealRoot{Ball(start), IsSimple(from, kFirstBits + bits)};
  }
  const double most = 4 * LogOfTerms(from) + 16.0 * static_cast<double>(kFirstBits + bits);
  for (slong work = kFirstBits + bits; static_cast<double>(work) < most; work *= 2) {
    watch_.Raise(work);
    const auto near = Converge(from, work);
    if (!near) continue;
    auto root = Certify(*near, work);
    if (!root || (!MakeExact(*root) && arb_rel_accuracy_bits(*root) < bits)) continue;
    const bool isSimple = IsSimple(*root, work);
    arb_mul_2exp_si(*root, *root, -shift_);
    return RealRoot{std::move(*root), isSimple};
  }
  return std::nullopt;
}

/// Newton's method with exact iterates, until another step would be lost in the roundings, or until
/// there is next to nothing left of the iterate.
std::optional<Ball> RealRoots::Converge(const Ball& start, slong bits) const {
  const BallPolynomial polynomial(squareFree_, bits);
  Ball x = start;
  Ball value;
  Ball slope;
  for (int step = 0; step < kMostSteps; ++step) {
    watch_.Look();
    arb_poly_evaluate2(value, slope, polynomial.Get(), x, bits);
    if (arb_contains_zero(slope)) return std::nullopt;
    if (arb_contains_zero(value)) return x;
    arb_div(value, value, slope, bits);
    arb_sub(x, x, value, bits);
    arb_get_mid_arb(x, x);
    const double log = LogOfMagnitude(x);
    const bool isSettled = LogOfMagnitude(value) < log - static_cast<double>(bits) / 2;
    if (isSettled || log < -static_cast<double>(bits)) return x;
  }
  return std::nullopt;
}

/// The zero next to an exact number, which is the only one in a neighbourhood that contains it.
std::optional<Ball> RealRoots::Certify(const Ball& near, slong bits) const {
  const BallPolynomial polynomial(squareFree_, bits);
  Ball value;
  Ball slope;
  arb_poly_evaluate2(value, slope, polynomial.Get(), near, bits);
  Ball step;
  arb_div(step, value, slope, bits);
  Ball around = near;
  mag_t radius;
  mag_init(radius);
  arb_get_mag(radius, step);
  mag_mul_2exp_si(radius, radius, 2);
  arb_add_error_mag(around, radius);
  mag_clear(radius);
  Ball unused;
  arb_poly_evaluate2(unused, slope, polynomial.Get(), around, bits);
  if (arb_contains_zero(slope)) return std::nullopt;
  arb_div(step, value, slope, bits);
  Ball root;
  arb_sub(root, near, step, bits);
  if (!arb_contains(around, root)) return std::nullopt;
  return root;
}

/// A zero that is rational is whole, the first coefficient being 1. True where this one is.
bool RealRoots::MakeExact(Ball& root) const {
  fmpz_t candidate;
  fmpz_init(candidate);
  const bool isUnique = arb_get_unique_fmpz(candidate, root) != 0;
  Ball whole;
  arb_set_fmpz(whole, candidate);
  fmpz_clear(candidate);
  if (!isUnique || !IsZeroAt(squareFree_, whole)) return false;
  root = whole;
  return true;
}

bool RealRoots::IsSimple(const Ball& root, slong bits) const {
  if (fmpz_poly_degree(repeated_.Get()) == 0) return true;
  Ball value;
  arb_poly_evaluate(value, BallPolynomial(repeated_, bits).Get(), root, bits);
  return !arb_contains_zero(value);
}

}  // namespace qmx
