// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <vector>

#include "base/matrix.h"
#include "derivation/rational.h"

// The numbers that the plain loops of the derivations work on. Each loop is a template over them:
// with doubles it gives the bits of the program's own algorithm, with traced numbers the same and
// beside them the exact values. Whatever a loop decides it decides by ValueOf, the double.

namespace qmx {

/// A number as the program computes it, and what it would be if nothing had been rounded since the
/// operands.
struct Traced {
  Traced() = default;
  /// A small whole number, which is exact.
  Traced(double whole) : value(whole), exact(static_cast<slong>(whole)) {}

  double value = 0;
  Rational exact;
  /// False from where on there are decimals alone.
  bool isKnown = true;
};

Traced operator+(const Traced& a, const Traced& b);
Traced operator-(const Traced& a, const Traced& b);
Traced operator*(const Traced& a, const Traced& b);
/// The exact quotient is unknown where the exact divisor is zero.
Traced operator/(const Traced& a, const Traced& b);
Traced operator-(const Traced& a);

/// coefficient · √square, with a square that is not negative.
struct TracedRoot {
  double value = 0;
  Rational coefficient;
  Rational square{1};
  bool isKnown = true;
};

TracedRoot RootOf(const Traced& square);
/// `root` is one that RootOf gave.
TracedRoot operator/(const Traced& a, const TracedRoot& root);

inline double RootOf(double square) { return std::sqrt(square); }
inline double ValueOf(double number) { return number; }
inline double ValueOf(const Traced& number) { return number.value; }
inline double ValueOf(const TracedRoot& number) { return number.value; }

/// True where double and exact value do not agree on being zero.
inline bool PartsAtZero(const Traced& number) {
  return number.isKnown && (number.value == 0) != number.exact.IsZero();
}

/// A rows x cols table of zeros, from 1.
template <class T>
class Elements {
 public:
  Elements() = default;
  Elements(int rows, int cols)
      : rows_(rows), cols_(cols), data_(static_cast<std::size_t>(rows) * cols) {}
  int Rows() const { return rows_; }
  int Cols() const { return cols_; }
  T& operator()(int i, int j) { return data_[static_cast<std::size_t>(i - 1) * cols_ + j - 1]; }
  const T& operator()(int i, int j) const {
    return data_[static_cast<std::size_t>(i - 1) * cols_ + j - 1];
  }
  auto begin() { return data_.begin(); }
  auto end() { return data_.end(); }
  auto begin() const { return data_.begin(); }
  auto end() const { return data_.end(); }

 private:
  int rows_ = 0;
  int cols_ = 0;
  std::vector<T> data_;
};

/// An element as its grid shows it: the exact value is the decimal number that stands there, with
/// up to 15 digits. Unknown for one that is not finite.
Traced TracedElement(double element);

/// The elements of an operand; with exact values only if they are wanted.
template <class T>
Elements<T> ElementsOf(const Matrix& A, bool isExact = true);

/// From now on these are decimals alone.
template <class T>
void ForgetExact(Elements<T>& elements) {
  for (T& element : elements) element.isKnown = false;
}

}  // namespace qmx
