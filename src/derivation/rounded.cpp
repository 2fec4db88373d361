// SPDX-License-Identifier: MIT
#include "derivation/rounded.h"

#include "base/number_text.h"
#include "derivation/shown.h"
#include "proof/ball.h"
#include "proof/held_digits.h"

namespace qmx {
namespace {

/// The whole number nearest to value · 10^places, for a positive value.
void RoundAt(const Rational& value, slong places, fmpz* rounded) {
  Rational scaled;
  fmpq_mul(scaled.Get(), value.Get(), PowerOfTen(places).Get());
  // (2p + q) / 2q, rounded down
  Whole below;
  fmpz_mul_2exp(below.Get(), scaled.Denominator(), 1);
  fmpz_mul_2exp(rounded, scaled.Numerator(), 1);
  fmpz_add(rounded, rounded, scaled.Denominator());
  fmpz_fdiv_q(rounded, rounded, below.Get());
}

/// The power of ten of the first digit of a positive value, or one less.
slong AboutLeading(const Rational& value) {
  const auto digits = [](const fmpz* number) {
    return static_cast<slong>(fmpz_sizeinbase(number, 10));
  };
  return digits(value.Numerator()) - digits(value.Denominator()) - 2;
}

/// Writes 0.d1d2d3... · 10^(leading + 1) as a grid does.
std::string Laid(std::string digits, slong leading) {
  while (digits.size() > 1 && digits.back() == '0') digits.pop_back();
  const auto count = static_cast<slong>(digits.size());
  const slong behind = count - 1 - leading;
  if (leading < kWideDigits && behind <= kWideDigits) {
    if (leading < 0)
      return "0." + std::string(static_cast<std::size_t>(-leading - 1), '0') + digits;
    if (behind <= 0) return digits + std::string(static_cast<std::size_t>(-behind), '0');
    return digits.insert(static_cast<std::size_t>(leading + 1), ".");
  }
  if (count > 1) digits.insert(1, ".");
  const slong magnitude = leading < 0 ? -leading : leading;
  return digits + (leading < 0 ? "E-" : "E+") + (magnitude < 10 ? "0" : "") +
         std::to_string(magnitude);
}

}  // namespace

std::string RoundedText(const Rational& value) {
  if (value.IsZero()) return "0";
  Rational magnitude = value;
  fmpq_abs(magnitude.Get(), magnitude.Get());
  slong leading = AboutLeading(magnitude);
  std::string digits;
  // The estimate is at most three too small.
  for (;; ++leading) {
    Whole rounded;
    RoundAt(magnitude, kWideDigits - 1 - leading, rounded.Get());
    digits = Digits(rounded.Get(), kWideDigits);
    if (!digits.empty()) break;
  }
  return (value.Sign() < 0 ? "-" : "") + Laid(std::move(digits), leading);
}

std::string RoundedText(const arb_t enclosure) {
  if (!arb_is_finite(enclosure)) return {};
  // Its ends are whole numbers times a power of two; long ones and absurd powers would fill the
  // memory.
  constexpr slong kMostPower = 100'000;
  Whole lower;
  Whole upper;
  Whole power;
  constexpr slong kEnoughBits = 256;
  Ball rounded;
  arb_set_round(rounded, enclosure, kEnoughBits);
  arb_get_interval_fmpz_2exp(lower.Get(), upper.Get(), power.Get(), rounded);
  if (fmpz_cmpabs(power.Get(), Rational(kMostPower).Numerator()) > 0) return {};
  const Rational unit = PowerOfTwo(fmpz_get_si(power.Get()));
  const auto textOf = [&unit](const fmpz* end) {
    Rational value;
    fmpq_mul_fmpz(value.Get(), unit.Get(), end);
    return RoundedText(value);
  };
  std::string text = textOf(lower.Get());
  return text == textOf(upper.Get()) ? text : std::string();
}

ShownNumber ShowRounded(const Rational& value) {
  ShownNumber shown = ShowDigits(RoundedText(value));
  shown.exact = ExactOf(value);
  return shown;
}

ShownNumber ShowDigits(const std::string& text) { return {text, text.size(), {}}; }

}  // namespace qmx
