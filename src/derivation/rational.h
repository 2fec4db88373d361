// SPDX-License-Identifier: MIT
#pragma once

#include <flint/fmpq.h>

#include <optional>
#include <string>
#include <string_view>

namespace qmx {

/// A rational number of any size.
class Rational {
 public:
  Rational() { fmpq_init(value_); }
  explicit Rational(slong whole) : Rational() { fmpq_set_si(value_, whole, 1); }
  Rational(const Rational& other) : Rational() { fmpq_set(value_, other.value_); }
  Rational(Rational&& other) noexcept : Rational() { fmpq_swap(value_, other.value_); }
  Rational& operator=(const Rational& other) {
    fmpq_set(value_, other.value_);
    return *this;
  }
  Rational& operator=(Rational&& other) noexcept {
    fmpq_swap(value_, other.value_);
    return *this;
  }
  ~Rational() { fmpq_clear(value_); }

  fmpq* Get() { return value_; }
  const fmpq* Get() const { return value_; }
  const fmpz* Numerator() const { return fmpq_numref(value_); }
  const fmpz* Denominator() const { return fmpq_denref(value_); }

  int Sign() const { return fmpq_sgn(value_); }
  bool IsZero() const { return fmpq_is_zero(value_) != 0; }
  /// Bits of numerator and denominator together.
  slong Bits() const {
    return static_cast<slong>(fmpz_bits(fmpq_numref(value_)) + fmpz_bits(fmpq_denref(value_)));
  }
  friend bool operator==(const Rational& a, const Rational& b) {
    return fmpq_equal(a.value_, b.value_) != 0;
  }

 private:
  fmpq_t value_;
};

/// A whole number of any size.
class Whole {
 public:
  Whole() { fmpz_init(value_); }
  Whole(const Whole&) = delete;
  Whole& operator=(const Whole&) = delete;
  ~Whole() { fmpz_clear(value_); }
  fmpz* Get() { return value_; }
  const fmpz* Get() const { return value_; }

 private:
  fmpz_t value_;
};

/// 10^exponent.
Rational PowerOfTen(slong exponent);
/// 2^exponent.
Rational PowerOfTwo(slong exponent);

/// A number as a text writes it: digits · 10^exponent.
struct WrittenNumber {
  Rational value;
  /// The first digit that is not 0 stands for 10^leading; 0 for zero.
  slong leading = 0;
};

/// What a text such as "-0.5", "3.25E-07" or "1E+300" writes; nothing where it is no number.
std::optional<WrittenNumber> ReadWritten(std::string_view text);

/// The digits of a whole number; empty where it has more than `most`.
std::string Digits(const fmpz* number, slong most);

}  // namespace qmx
