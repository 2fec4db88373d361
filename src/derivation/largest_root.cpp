// SPDX-License-Identifier: MIT
#include "derivation/largest_root.h"

namespace qmx {
LargestRoot::LargestRoot(const RationalPolynomial& polynomial, bool isReversed,
                         const DerivationLook& look)
    : look_(look) {
  fmpz_poly_struct* own = polynomial_.Get();
  fmpq_poly_get_numerator(own, polynomial.Get());
  if (isReversed) fmpz_poly_reverse(own, own, fmpz_poly_length(own));
  FindPower();
}

int LargestRoot::CountAbove(const Rational& number) const {
  if (look_) look_();
  // v^n · p((x + u) / v) for number = u / v
  WholePolynomial copy;
  fmpz_poly_struct* shifted = copy.Get();
  fmpz_poly_set(shifted, polynomial_.Get());
  Whole power;
  fmpz_one(power.Get());
  for (slong k = fmpz_poly_degree(shifted); k >= 0; --k) {
    fmpz* coefficient = fmpz_poly_get_coeff_ptr(shifted, k);
    fmpz_mul(coefficient, coefficient, power.Get());
    fmpz_mul(power.Get(), power.Get(), number.Denominator());
  }
  fmpz_poly_taylor_shift(shifted, shifted, number.Numerator());
  int changes = 0;
  int last = 0;
  for (slong k = 0; k <= fmpz_poly_degree(shifted); ++k) {
    const int sign = fmpz_sgn(fmpz_poly_get_coeff_ptr(shifted, k));
    if (sign != 0 && last != 0 && sign != last) ++changes;
    if (sign != 0) last = sign;
  }
  return changes;
}

void LargestRoot::FindPower() {
  Whole bound;
  fmpz_poly_bound_roots(bound.Get(), polynomial_.Get());
  auto upper = static_cast<slong>(fmpz_bits(bound.Get()));
  // In steps that double, to a power of two that is below; then between the two.
  slong step = 1;
  while (CountAbove(PowerOfTwo(upper - step)) == 0) {
    upper -= step;
    step *= 2;
  }
  slong lower = upper - step;
  while (upper - lower > 1) {
    const slong middle = lower + (upper - lower) / 2;
    (CountAbove(PowerOfTwo(middle)) == 0 ? upper : lower) = middle;
  }
  lower_ = PowerOfTwo(lower);
  upper_ = PowerOfTwo(upper);
}

void LargestRoot::Narrow(int bits) {
  for (; bits_ < bits; ++bits_) {
    Rational middle;
    fmpq_add(middle.Get(), lower_.Get(), upper_.Get());
    fmpq_div_2exp(middle.Get(), middle.Get(), 1);
    (CountAbove(middle) == 0 ? upper_ : lower_) = middle;
  }
}

}  // namespace qmx
