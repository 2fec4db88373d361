// SPDX-License-Identifier: MIT
#include "derivation/traced.h"

#include <optional>

#include "base/number_text.h"

namespace qmx {
namespace {

// A number with more bits is given up, so that time and memory stay bounded: a determinant of order
// 8 with elements from 1e-300 to 1e300 has a third of that.
constexpr slong kMostBits = 50'000;

template <class Combine>
Traced Combined(double value, const Traced& a, const Traced& b, Combine&& combine) {
  Traced result;
  result.value = value;
  result.isKnown = a.isKnown && b.isKnown;
  if (!result.isKnown) return result;
  combine(result.exact.Get(), a.exact.Get(), b.exact.Get());
  if (result.exact.Bits() > kMostBits) result.isKnown = false;
  return result;
}

}  // namespace

Traced operator+(const Traced& a, const Traced& b) {
  return Combined(a.value + b.value, a, b, fmpq_add);
}

Traced operator-(const Traced& a, const Traced& b) {
  return Combined(a.value - b.value, a, b, fmpq_sub);
}

Traced operator*(const Traced& a, const Traced& b) {
  return Combined(a.value * b.value, a, b, fmpq_mul);
}

Traced operator/(const Traced& a, const Traced& b) {
  if (!b.isKnown || !b.exact.IsZero()) return Combined(a.value / b.value, a, b, fmpq_div);
  Traced result;
  result.value = a.value / b.value;
  result.isKnown = false;
  return result;
}

Traced operator-(const Traced& a) {
  Traced result = a;
  result.value = -a.value;
  fmpq_neg(result.exact.Get(), result.exact.Get());
  return result;
}

TracedRoot RootOf(const Traced& square) {
  TracedRoot root;
  root.value = std::sqrt(square.value);
  root.coefficient = Rational(1);
  root.square = square.exact;
  root.isKnown = square.isKnown;
  return root;
}

TracedRoot operator/(const Traced& a, const TracedRoot& root) {
  TracedRoot result;
  result.value = a.value / root.value;
  result.isKnown = a.isKnown && root.isKnown && !root.square.IsZero();
  if (!result.isKnown) return result;
  fmpq_div(result.coefficient.Get(), a.exact.Get(), root.square.Get());
  result.square = root.square;
  return result;
}

Traced TracedElement(double element) {
  Traced traced;
  traced.value = element;
  std::optional<WrittenNumber> written = ReadWritten(CStr(element));
  traced.isKnown = std::isfinite(element) && written.has_value();
  if (traced.isKnown) traced.exact = std::move(written->value);
  return traced;
}

template <>
Elements<double> ElementsOf(const Matrix& A, bool /*isExact*/) {
  Elements<double> elements(A.Rows(), A.Cols());
  std::copy(A.Data(), A.Data() + A.Size(), elements.begin());
  return elements;
}

template <>
Elements<Traced> ElementsOf(const Matrix& A, bool isExact) {
  Elements<Traced> elements(A.Rows(), A.Cols());
  const double* from = A.Data();
  for (Traced& element : elements) {
    if (isExact) {
      element = TracedElement(*from);
    } else {
      element.value = *from;
      element.isKnown = false;
    }
    ++from;
  }
  return elements;
}

}  // namespace qmx
