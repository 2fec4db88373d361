// SPDX-License-Identifier: MIT
#pragma once

#include <flint/fmpq.h>

#include <string>
#include <string_view>
#include <vector>

#include "base/matrix.h"

namespace qmx::testing {

/// A rational number of any size: the oracle's arithmetic, without ball arithmetic.
class Rational {
 public:
  Rational() { fmpq_init(value_); }
  Rational(double exact);  // Not explicit: doubles are rational numbers.
  Rational(const Rational& other) : Rational() { fmpq_set(value_, other.value_); }
  Rational(Rational&& other) noexcept : Rational() { fmpq_swap(value_, other.value_); }
  Rational& operator=(Rational other) noexcept {
    fmpq_swap(value_, other.value_);
    return *this;
  }
  ~Rational() { fmpq_clear(value_); }

  fmpq* Get() { return value_; }
  const fmpq* Get() const { return value_; }

  Rational& operator+=(const Rational& b) { return fmpq_add(value_, value_, b.value_), *this; }
  Rational& operator-=(const Rational& b) { return fmpq_sub(value_, value_, b.value_), *this; }
  Rational& operator*=(const Rational& b) { return fmpq_mul(value_, value_, b.value_), *this; }
  Rational& operator/=(const Rational& b) { return fmpq_div(value_, value_, b.value_), *this; }
  friend Rational operator+(Rational a, const Rational& b) { return a += b; }
  friend Rational operator-(Rational a, const Rational& b) { return a -= b; }
  friend Rational operator*(Rational a, const Rational& b) { return a *= b; }
  friend Rational operator/(Rational a, const Rational& b) { return a /= b; }
  friend bool operator==(const Rational& a, const Rational& b) {
    return fmpq_equal(a.value_, b.value_) != 0;
  }
  friend bool operator<(const Rational& a, const Rational& b) {
    return fmpq_cmp(a.value_, b.value_) < 0;
  }

  int Sign() const { return fmpq_sgn(value_); }
  bool IsZero() const { return Sign() == 0; }
  Rational Magnitude() const;
  double ToDouble() const;

 private:
  fmpq_t value_;
};

/// 10^exponent, and the number that a text such as "-.5E-07" writes.
Rational PowerOfTen(int exponent);
Rational FromText(std::string_view text);

/// The root of a number that is not negative, off by less than 2^-3000 of itself.
Rational RootOf(const Rational& square);

/// How many digits of a number hold, 0 to `most`, where `exact` is what it stands for, by the
/// definition: the largest k with |shown - exact| < 1 unit of the k-th significant digit.
int TrueDigits(const Rational& shown, int most, const Rational& exact);

/// A dense matrix of them, from 1.
class RationalMatrix {
 public:
  RationalMatrix(int rows, int cols) : rows_(rows), cols_(cols), data_(rows * cols) {}
  explicit RationalMatrix(const Matrix& A);
  int Rows() const { return rows_; }
  int Cols() const { return cols_; }
  Rational& operator()(int i, int j) { return data_[(i - 1) * cols_ + (j - 1)]; }
  const Rational& operator()(int i, int j) const { return data_[(i - 1) * cols_ + (j - 1)]; }

 private:
  int rows_;
  int cols_;
  std::vector<Rational> data_;
};

}  // namespace qmx::testing
