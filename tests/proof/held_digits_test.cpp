// SPDX-License-Identifier: MIT
#include "proof/held_digits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "base/number_text.h"
#include "proof/rational.h"
#include "support/core_cases.h"

namespace qmx {
namespace {

using testing::Rational;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// What would be proved about a computed number at the best, the exact value being known.
ElementProof BestProof(double computed, const Rational& exact) {
  ElementProof proof;
  proof.lower = proof.upper = exact.ToDouble();
  while (exact < Rational(proof.lower)) proof.lower = std::nextafter(proof.lower, -kInfinity);
  while (Rational(proof.upper) < exact) proof.upper = std::nextafter(proof.upper, kInfinity);
  if (computed == 0) {
    if (exact.IsZero()) proof.relativeError = 0;
    return proof;
  }
  const Rational error = ((Rational(computed) - exact) / Rational(computed)).Magnitude();
  proof.relativeError = error.ToDouble();
  while (Rational(proof.relativeError) < error) {
    proof.relativeError = std::nextafter(proof.relativeError, kInfinity);
  }
  return proof;
}

TEST(HeldDigitsTest, AreCountedByTheUnitOfEachDigit) {
  struct Example {
    const char* shown;
    int most;
    Rational exact;
    int digits;
  };
  const Rational third = Rational(1) / Rational(3);
  const Example examples[] = {
      {"0.333333333333333", 15, third, 15},
      {"0.333333333333334", 15, third, 15},  // Off by less than one unit of the last.
      {"0.333333333333335", 15, third, 14},
      {"0.3333333", 7, third, 7},
      {"-0.3333333", 7, third, 0},
      {" .333333333333333", 15, third, 15},
      {"-.5", 15, Rational(-0.5), 15},
      {"0.5", 15, testing::FromText("0.5000001"), 6},
      {"100", 15, Rational(100), 15},
      {"0.5", 15, testing::FromText("0.50000009"), 7},
      {"100", 15, Rational(101), 2},
      {"100", 15, testing::FromText("100.9"), 3},
      {"999", 15, Rational(1000), 2},
      {"1000", 15, Rational(999), 3},
      {"9.007199E+15", 7, Rational(-1), 0},
      {"1E+20", 15, testing::FromText("1.4E+20"), 1},
      {"2E+20", 15, testing::FromText("1E+20"), 0},
      {"3", 15, testing::FromText("3.99999"), 1},
      {"3", 15, Rational(4), 0},
      {"0", 15, Rational(0), 15},
      {"0", 7, testing::FromText("1E-50"), 0},
      {" 0", 15, Rational(0), 15},
      {"1E-320", 15, testing::FromText("1.04E-320"), 2},
      {"1.79769313486232E+308", 15, Rational(std::numeric_limits<double>::max()), 15},
  };
  for (const Example& example : examples) {
    const double computed = testing::FromText(example.shown).ToDouble();
    const ElementProof proof = BestProof(computed, example.exact);
    EXPECT_EQ(HeldDigits(example.shown, example.most, computed, proof), example.digits)
        << example.shown;
  }
}

TEST(HeldDigitsTest, NothingHoldsThatIsNotProvedOrNoNumber) {
  const ElementProof nothing;
  EXPECT_FALSE(nothing.IsEnclosed());
  EXPECT_EQ(HeldDigits(1.0, nothing), 0);
  EXPECT_EQ(HeldDigits(0.0, nothing), 0);
  EXPECT_EQ(HeldDigits("1", 15, 1.0, nothing), 0);
  EXPECT_EQ(HeldDigits("0", 15, 0.0, nothing), 0);
  const ElementProof exact = BestProof(1, Rational(1));
  for (const char* text :
       {"", " ", "-", "x", "1x", "1E", "1E+", "..", "123456789012345678", "1 2"}) {
    EXPECT_EQ(HeldDigits(text, 15, 1.0, exact), 0) << text;
  }
  EXPECT_EQ(HeldDigits("1", 15, 1.0, exact), 15);
  EXPECT_EQ(HeldDigits(kInfinity, exact), 0);
  EXPECT_EQ(HeldDigits(std::nan(""), exact), 0);
}

TEST(HeldDigitsTest, AllDigitsOfACorrectlyRoundedNumberHold) {
  testing::Dice dice(11);
  for (int k = 0; k < 20000; ++k) {
    const Rational exact = Rational(dice.Real(-1, 1)) / Rational(dice.Integer(1, 999)) *
                           testing::PowerOfTen(dice.Integer(-290, 290));
    const double computed = exact.ToDouble();
    const ElementProof proof = BestProof(computed, exact);
    EXPECT_EQ(HeldDigits(CStr(computed), kWideDigits, computed, proof), kWideDigits) << computed;
    EXPECT_GE(HeldDigits(computed, proof), 15) << computed;
  }
}

/// Against the definition in rational numbers, with errors of every size and numbers of every
/// magnitude, next to powers of ten as well.
TEST(HeldDigitsTest, AgreeWithTheDefinition) {
  testing::Dice dice(12);
  int equal = 0;
  constexpr int kNumbers = 30000;
  for (int k = 0; k < kNumbers; ++k) {
    double computed = dice.Real(-1, 1) * std::pow(10.0, dice.Integer(-320, 300));
    if (dice.Chance(0.2)) computed = std::pow(10.0, dice.Integer(-320, 300));
    if (dice.Chance(0.1)) computed = std::nextafter(computed, dice.Chance(0.5) ? 0 : 1e308);
    Rational exact(computed);
    if (dice.Chance(0.8)) {
      const Rational change =
          Rational(dice.Real(-1, 1)) * testing::PowerOfTen(-dice.Integer(0, 18));
      exact *= Rational(1) + change;
    }
    const ElementProof proof = BestProof(computed, exact);
    const auto compare = [&](int claimed, const Rational& shown, int most) {
      const int truth = testing::TrueDigits(shown, most, exact);
      EXPECT_LE(claimed, truth) << computed << " shown as " << shown.ToDouble();
      EXPECT_GE(claimed, truth - 1) << computed << " shown as " << shown.ToDouble();
      if (claimed == truth) ++equal;
    };
    const std::string wide = CStr(computed);
    const std::string narrow = CStrSingle(computed);
    compare(HeldDigits(computed, proof), Rational(computed), kDoubleDigits);
    compare(HeldDigits(wide, kWideDigits, computed, proof), testing::FromText(wide), kWideDigits);
    compare(HeldDigits(narrow, kNarrowDigits, computed, proof), testing::FromText(narrow),
            kNarrowDigits);
  }
  EXPECT_GT(equal, 3 * kNumbers * 0.999);
}

}  // namespace
}  // namespace qmx
