// SPDX-License-Identifier: MIT
#include "derivation/rounded.h"

#include <gtest/gtest.h>

#include <cmath>

#include "base/number_text.h"
#include "derivation/operands.h"
#include "proof/rational.h"

namespace qmx::testing {
namespace {

std::string Text(const Rational& value) {
  qmx::Rational same;
  fmpq_set(same.Get(), value.Get());
  return RoundedText(same);
}

TEST(Rounded, WritesWhatAGridWrites) {
  Dice dice(3);
  for (int round = 0; round < 20000; ++round) {
    const double magnitude = std::pow(10.0, dice.Integer(-320, 300));
    const double value =
        (dice.Integer(0, 1) == 0 ? 1 : -1) * magnitude * (1 + dice.Integer(0, 999999999) * 1e-8);
    EXPECT_EQ(Text(Rational(value)), CStr(value));
    const double whole = dice.Integer(-100000, 100000);
    EXPECT_EQ(Text(Rational(whole)), CStr(whole));
    const std::string decimal = CStr(dice.Integer(-100000, 100000) * 0.0001);
    EXPECT_EQ(Text(FromText(decimal)), decimal);
  }
}

TEST(Rounded, WritesWhatNoDoubleHolds) {
  EXPECT_EQ(Text(PowerOfTen(400)), "1E+400");
  EXPECT_EQ(Text(Rational(-25.0) * PowerOfTen(-1000)), "-2.5E-999");
  EXPECT_EQ(Text(Rational(1.0) / Rational(3.0)), "0.333333333333333");
  EXPECT_EQ(Text(Rational(2.0) / Rational(3.0)), "0.666666666666667");
  EXPECT_EQ(Text(Rational(1.0) / Rational(30.0)), "3.33333333333333E-02");
  EXPECT_EQ(Text(PowerOfTen(15)), "1E+15");
  EXPECT_EQ(Text(PowerOfTen(15) - Rational(1.0)), "999999999999999");
  EXPECT_EQ(Text(PowerOfTen(15) - Rational(0.4)), "1E+15");
  EXPECT_EQ(Text(Rational(0.0)), "0");
}

TEST(Rounded, WritesOfAnEnclosureOnlyWhatItTells) {
  arb_t ball;
  arb_init(ball);
  arb_set_si(ball, 2);
  arb_sqrt(ball, ball, 96);
  EXPECT_EQ(RoundedText(ball), "1.4142135623731");
  arb_set_si(ball, 2);
  arb_sqrt(ball, ball, 40);
  EXPECT_EQ(RoundedText(ball), "");
  arb_zero_pm_inf(ball);
  EXPECT_EQ(RoundedText(ball), "");
  arb_clear(ball);
}

}  // namespace
}  // namespace qmx::testing
