// SPDX-License-Identifier: MIT
#include "proof/whole_numbers.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/core_cases.h"

namespace qmx {
namespace {

/// A ball around zero.
Ball Around(double radius) {
  Ball ball;
  arb_add_error_2exp_si(ball, 0);
  Ball factor(radius);
  arb_mul(ball, ball, factor, 64);
  return ball;
}

TEST(WholeNumbersTest, OnlyAWholeNumberBelowOneIsZero) {
  const Ball one(1.0);
  EXPECT_TRUE(IsZeroQuotient(Around(0.9), one, 0));
  EXPECT_FALSE(IsZeroQuotient(Around(1.1), one, 0));
  EXPECT_FALSE(IsZeroQuotient(Around(0.9), Ball(-2.0), 0));
  EXPECT_TRUE(IsZeroQuotient(Around(0.4), Ball(-2.0), 0));
  EXPECT_FALSE(IsZeroQuotient(Around(0.9), one, 1));
  EXPECT_TRUE(IsZeroQuotient(Around(3), one, -2));
  EXPECT_FALSE(IsZeroQuotient(one, one, 0));
  Ball unknown;
  arb_zero_pm_inf(unknown);
  EXPECT_FALSE(IsZeroQuotient(unknown, one, -100));
  EXPECT_FALSE(IsZeroQuotient(one, unknown, -100));
}

/// True if 2^exponent·value is a whole number, and odd ones among them.
bool IsWhole(double value, slong exponent) {
  int own = 0;
  double mantissa = std::frexp(value, &own) * 0x1p53;
  slong total = own - 53 + exponent;
  for (; total < 0 && std::fmod(mantissa, 2) == 0 && mantissa != 0; ++total) mantissa /= 2;
  return mantissa == 0 || total >= 0;
}

TEST(WholeNumbersTest, ScalesMakeEveryElementWhole) {
  testing::CaseSource cases(61, testing::CaseShape::kAny, 8);
  for (int k = 0; k < 3000; ++k) {
    const Matrix A = cases.Next();
    const WholeScale scale = WholeScaleOf(A);
    const WholeScale ofBalls = WholeScaleOf(BallMatrix(A));
    const WholeScale columns = WholeColumnScaleOf(A);
    EXPECT_EQ(ofBalls.rows, scale.rows);
    EXPECT_EQ(ofBalls.cols, scale.cols);
    for (int i = 0; i < A.Rows(); ++i) {
      EXPECT_EQ(columns.rows[i], 0);
      bool rowCouldBeLess = true;
      for (int j = 0; j < A.Cols(); ++j) {
        const double value = A(i + 1, j + 1);
        EXPECT_TRUE(IsWhole(value, scale.rows[i] + scale.cols[j])) << value;
        EXPECT_TRUE(IsWhole(value, columns.cols[j])) << value;
        rowCouldBeLess = rowCouldBeLess && IsWhole(value, scale.rows[i] - 1);
      }
      bool isZero = true;
      for (int j = 1; j <= A.Cols(); ++j) isZero = isZero && A(i + 1, j) == 0;
      EXPECT_EQ(rowCouldBeLess, isZero);
    }
  }
}

}  // namespace
}  // namespace qmx
