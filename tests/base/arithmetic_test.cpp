// SPDX-License-Identifier: MIT
#include "base/arithmetic.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "base/fault.h"

namespace qmx {
namespace {

/// A number that the compiler cannot calculate with.
double Opaque(double value) {
  volatile double kept = value;
  return kept;
}

/// The number of the fault that the check raises, 0 for none.
int Raised() {
  try {
    CheckArithmetic();
  } catch (const RuntimeFault& fault) {
    return static_cast<int>(fault.Number());
  }
  return 0;
}

class ArithmeticTest : public ::testing::Test {
 protected:
  void SetUp() override { ClearArithmeticFaults(); }
  void TearDown() override { ClearArithmeticFaults(); }
  void Keep(double value) { kept_ = value; }

 private:
  volatile double kept_ = 0;
};

TEST_F(ArithmeticTest, NothingIsRaisedWithoutAReason) {
  Keep(Opaque(1) / Opaque(3));
  Keep(Opaque(1e-300) * Opaque(1e-300));
  Keep(Opaque(5e-324) / Opaque(3));
  EXPECT_EQ(Raised(), 0) << "inexact results and underflow are no faults";
}

TEST_F(ArithmeticTest, OverflowIsSix) {
  Keep(Opaque(1e200) * Opaque(1e200));
  EXPECT_EQ(Raised(), 6);
}

TEST_F(ArithmeticTest, DivisionByZeroIsEleven) {
  Keep(Opaque(1) / Opaque(0));
  EXPECT_EQ(Raised(), 11);
}

TEST_F(ArithmeticTest, AnInvalidOperationIsFive) {
  Keep(Opaque(0) / Opaque(0));
  EXPECT_EQ(Raised(), 5);
  ClearArithmeticFaults();
  Keep(std::sqrt(Opaque(-1)));
  EXPECT_EQ(Raised(), 5);
}

TEST_F(ArithmeticTest, AnInfinityThatVanishesAgainIsStillAFault) {
  const double infinite = Opaque(1e200) * Opaque(1e200);
  Keep(Opaque(1) / infinite);
  EXPECT_EQ(Raised(), 6);
}

TEST_F(ArithmeticTest, TheCauseGoesBeforeWhatFollowsFromIt) {
  Keep(Opaque(0) / Opaque(0));
  Keep(Opaque(1) / Opaque(0));
  EXPECT_EQ(Raised(), 11);
  Keep(Opaque(1e200) * Opaque(1e200));
  EXPECT_EQ(Raised(), 6);
}

TEST_F(ArithmeticTest, ClearingForgets) {
  Keep(Opaque(1) / Opaque(0));
  ClearArithmeticFaults();
  EXPECT_EQ(Raised(), 0);
}

TEST_F(ArithmeticTest, WhatComputesMeanwhileLeavesTheFaultsAsTheyWere) {
  {
    const KeepArithmeticFaults kept;
    Keep(Opaque(1) / Opaque(0));
  }
  EXPECT_EQ(Raised(), 0);
  Keep(Opaque(1e200) * Opaque(1e200));
  {
    const KeepArithmeticFaults kept;
    ClearArithmeticFaults();
    Keep(Opaque(1) / Opaque(0));
  }
  EXPECT_EQ(Raised(), 6);
  ClearArithmeticFaults();
  EXPECT_EQ(Raised(), 0);
}

/// A fault is a flag and nothing else, before and afterwards.
TEST_F(ArithmeticTest, BroughtBackFaultsEndNoProgram) {
  Keep(Opaque(1e200) * Opaque(1e200));
  const ArithmeticFaults faults;
  faults.BringBack();
  ClearArithmeticFaults();
  Keep(Opaque(1) / Opaque(3));
  EXPECT_EQ(Raised(), 0);
  Keep(Opaque(0) / Opaque(0));
  EXPECT_EQ(Raised(), 5);
}

TEST_F(ArithmeticTest, CheckingDoesNotForget) {
  Keep(Opaque(1) / Opaque(0));
  EXPECT_EQ(Raised(), 11);
  EXPECT_EQ(Raised(), 11);
}

}  // namespace
}  // namespace qmx
