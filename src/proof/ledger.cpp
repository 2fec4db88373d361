// SPDX-License-Identifier: MIT
#include "proof/ledger.h"

#include <algorithm>
#include <cmath>

namespace qmx {
namespace {

// A ball is far narrower than doubles lie where its radius is smaller than the number, or than the
// computed one, by so many bits.
constexpr slong kNarrowBits = 70;
constexpr slong kErrorBits = 256;

/// True if the radius is at most 2^-kNarrowBits·|number|.
bool IsNarrowBeside(const Ball& ball, arf_srcptr number) {
  mag_t radius;
  mag_init(radius);
  mag_mul_2exp_si(radius, arb_radref(arb_srcptr(ball)), kNarrowBits);
  const bool isNarrow = arf_cmpabs_mag(number, radius) >= 0;
  mag_clear(radius);
  return isNarrow;
}

double RelativeError(const Ball& computed, const Ball& exact) {
  Ball error;
  arb_sub(error, computed, exact, kErrorBits);
  if (arb_is_zero(error)) return 0;
  arb_div(error, error, computed, kErrorBits);
  return LargestMagnitude(error);
}

}  // namespace

Ledger::Ledger(const Matrix& computed, ResultProof& result)
    : computed_(computed), result_(result) {}

void Ledger::BeginPass() { wide_ = maybeZero_ = hopeless_ = 0; }

void Ledger::Enter(int row, int col, const Ball& exact) {
  const double value = Computed(row, col);
  ElementProof& proof = result_.At(row + 1, col + 1);
  proof.lower = std::max(proof.lower, LowerEnd(exact));
  proof.upper = std::min(proof.upper, UpperEnd(exact));
  if (!std::isfinite(value)) return;
  const Ball computed(value);
  if (value == 0) {
    if (arb_is_zero(exact)) proof.relativeError = 0;
    if (!arb_is_zero(exact) && arb_contains_zero(exact)) ++maybeZero_;
  } else {
    proof.relativeError = std::min(proof.relativeError, RelativeError(computed, exact));
    const bool isNarrow = IsNarrowBeside(exact, arb_midref(arb_srcptr(exact))) ||
                          IsNarrowBeside(exact, arb_midref(arb_srcptr(computed)));
    if (!isNarrow) ++wide_;
  }
}

ProofOutcome OutcomeOf(const Ledger& ledger) {
  const int open = ledger.Wide() + ledger.MaybeZero() + ledger.Hopeless();
  return open == 0 ? ProofOutcome::kProved : ProofOutcome::kPartlyProved;
}

}  // namespace qmx
