// SPDX-License-Identifier: MIT
#include "output/scalar_text.h"

#include <gtest/gtest.h>

namespace qmx {
namespace {

TEST(ScalarText, LeavesPlainNumbersAsTheyAre) {
  EXPECT_EQ(ScalarText(0), " 0");
  EXPECT_EQ(ScalarText(-0.0), " 0");
  EXPECT_EQ(ScalarText(-0.5), "-.5");
  EXPECT_EQ(ScalarText(1.0 / 3), " .333333333333333");
  EXPECT_EQ(ScalarText(-2.0 / 3), "-.666666666666667");
  EXPECT_EQ(ScalarText(123456789012345.0), " 123456789012345");
  EXPECT_EQ(ScalarText(1.23456789012345), " 1.23456789012345");
}

TEST(ScalarText, RoundsTheMantissaOfTheExponentFormToTenDecimals) {
  EXPECT_EQ(ScalarText(1.23456789012346e17), " 1.2345678901E+17");
  EXPECT_EQ(ScalarText(-1.23456789012346e17), "-1.2345678901E+17");
  EXPECT_EQ(ScalarText(-2.5e-30), "-2.5E-30");
  EXPECT_EQ(ScalarText(1e20), " 1E+20");
  EXPECT_EQ(ScalarText(1e-300), " 1E-300");
  EXPECT_EQ(ScalarText(1.0 / 30), " 3.3333333333E-02");
  EXPECT_EQ(ScalarText(2.0 / 30), " 6.6666666667E-02");
}

TEST(ScalarText, RoundsHalvesToEven) {
  EXPECT_EQ(ScalarText(1.00000000005e20), " 1E+20");
  EXPECT_EQ(ScalarText(1.00000000015e20), " 1.0000000002E+20");
  EXPECT_EQ(ScalarText(-1.00000000025e20), "-1.0000000002E+20");
  EXPECT_EQ(ScalarText(1.000000000051e20), " 1.0000000001E+20");
}

TEST(ScalarText, KeepsAMantissaThatRoundsToTen) {
  EXPECT_EQ(ScalarText(9.99999999999e20), " 10E+20");
  EXPECT_EQ(ScalarText(-9.99999999999e-30), "-10E-30");
}

TEST(ScalarText, HoldsAtTheEdgesOfTheRange) {
  EXPECT_EQ(ScalarText(1.7976931348623157e308), " 1.7976931349E+308");
  EXPECT_EQ(ScalarText(2.2250738585072014e-308), " 2.2250738585E-308");
  EXPECT_EQ(ScalarText(4.9406564584124654e-324), " 4.9406564584E-324");
}

}  // namespace
}  // namespace qmx
