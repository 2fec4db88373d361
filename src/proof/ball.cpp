// SPDX-License-Identifier: MIT
#include "proof/ball.h"

#include <cmath>
#include <limits>

namespace qmx {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Bits of an end before it is rounded to a double.
constexpr slong kEndBits = 64;

// Most products of doubles of similar size and their sums have fewer.
constexpr slong kFirstDotBits = 160;

class Float {
 public:
  Float() { arf_init(value_); }
  Float(const Float&) = delete;
  Float& operator=(const Float&) = delete;
  ~Float() { arf_clear(value_); }
  arf_ptr Get() { return value_; }

 private:
  arf_t value_;
};

/// The largest double that is no larger than the number.
double RoundDown(arf_srcptr number) {
  double rounded = arf_get_d(number, ARF_RND_FLOOR);
  // Subnormal numbers and the largest ones depend on the conversion; the comparison does not.
  while (rounded > -kInfinity && arf_cmp_d(number, rounded) < 0) {
    rounded = std::nextafter(rounded, -kInfinity);
  }
  return rounded;
}

double RoundUp(arf_srcptr number) {
  double rounded = arf_get_d(number, ARF_RND_CEIL);
  while (rounded < kInfinity && arf_cmp_d(number, rounded) > 0) {
    rounded = std::nextafter(rounded, kInfinity);
  }
  return rounded;
}

}  // namespace

BallMatrix::BallMatrix(const Matrix& A) : BallMatrix(A.Rows(), A.Cols()) {
  for (int i = 0; i < A.Rows(); ++i) {
    for (int j = 0; j < A.Cols(); ++j) arb_set_d((*this)(i, j), A(i + 1, j + 1));
  }
}

BallMatrix BallMatrix::Transposed() const {
  BallMatrix transposed(Cols(), Rows());
  arb_mat_transpose(transposed.value_, value_);
  return transposed;
}

BallMatrix IdentityBalls(int n) {
  BallMatrix identity(n, n);
  for (int i = 0; i < n; ++i) arb_one(identity(i, i));
  return identity;
}

void ExactDot(arb_ptr sum, arb_srcptr one, arb_srcptr two, int count) {
  // Nothing is rounded as long as the bits reach from the first to the last one of all products.
  for (slong bits = kFirstDotBits;; bits *= 2) {
    arb_dot(sum, nullptr, 0, one, 1, two, 1, count, bits);
    if (arb_is_exact(sum)) return;
  }
}

BallMatrix GramMatrix(const Matrix& A, const Watch& watch) {
  const BallMatrix columns = BallMatrix(A).Transposed();
  BallMatrix gram(A.Cols(), A.Cols());
  for (int i = 0; i < A.Cols(); ++i) {
    for (int j = 0; j <= i; ++j) {
      watch.Look();
      ExactDot(gram(i, j), columns.Row(i), columns.Row(j), A.Rows());
      arb_set(gram(j, i), gram(i, j));
    }
  }
  return gram;
}

double LowerEnd(const Ball& ball) {
  Float end;
  arb_get_lbound_arf(end.Get(), ball, kEndBits);
  return RoundDown(end.Get());
}

double UpperEnd(const Ball& ball) {
  Float end;
  arb_get_ubound_arf(end.Get(), ball, kEndBits);
  return RoundUp(end.Get());
}

double LargestMagnitude(const Ball& ball) {
  Float bound;
  arb_get_abs_ubound_arf(bound.Get(), ball, kEndBits);
  return RoundUp(bound.Get());
}

double LogOfMagnitude(arb_srcptr ball) {
  mag_t bound;
  mag_init(bound);
  arb_get_mag(bound, ball);
  double log = -kInfinity;
  if (mag_is_inf(bound)) {
    log = kInfinity;
  } else if (!mag_is_zero(bound)) {
    log = fmpz_get_d(MAG_EXPREF(bound));  // The magnitude is at least half of that power of two.
  }
  mag_clear(bound);
  return log;
}

}  // namespace qmx
