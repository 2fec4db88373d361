// SPDX-License-Identifier: MIT
#include "algorithms/special_matrix.h"

#include <gtest/gtest.h>

#include <cmath>

#include "reference/reference.h"
#include "support/core_cases.h"
#include "support/core_compare.h"
#include "support/core_exact.h"

namespace qmx {
namespace {

Progress unheard;

using testing::Rows;

std::function<float()> Drawing(testing::Dice& dice) {
  return [&dice] { return static_cast<float>(dice.Next() >> 40) * 0x1p-24f; };
}

TEST(MatrixFillTest, RandomEntriesHaveTheBitsOfThePlainLoop) {
  testing::Dice dice(701);
  testing::Comparison comparison("random matrices");
  while (comparison.Count() < testing::kCases && !comparison.HasSeenEnough()) {
    const int rows = dice.Integer(0, 8);
    const int cols = dice.Integer(0, 8);
    const RandomKind kind{dice.Integer(-100, 100) / 8.0, dice.Integer(-100, 100) / 8.0,
                          dice.Chance(0.5), dice.Chance(0.5)};
    const std::uint64_t seed = dice.Next();
    comparison.Compare(
        [&] {
          testing::Dice draws(seed);
          Matrix created(rows, cols);
          testing::Record record{FillRandom(created, kind, Drawing(draws), unheard) ? 1.0 : 0.0};
          testing::Append(record, created);
          return record;
        },
        [&] {
          testing::Dice draws(seed);
          const reference::Created created = reference::Random(
              rows, cols, kind.low, kind.high, kind.symmetric, kind.integers, Drawing(draws));
          testing::Record record{created.complete ? 1.0 : 0.0};
          testing::Append(record, created.table);
          return record;
        },
        {}, std::to_string(rows) + " x " + std::to_string(cols));
  }
}

TEST(MatrixFillTest, IdentitiesAgreeWithThePlainLoop) {
  testing::Comparison comparison("identities");
  for (int rows = 0; rows <= 12; ++rows) {
    for (int cols = 0; cols <= 12; ++cols) {
      comparison.Compare(
          [&] {
            Matrix created(rows, cols);
            testing::Record record{FillIdentity(created) ? 1.0 : 0.0};
            testing::Append(record, created);
            return record;
          },
          [&] {
            const reference::Created created = reference::Identity(rows, cols);
            testing::Record record{created.complete ? 1.0 : 0.0};
            testing::Append(record, created.table);
            return record;
          },
          {});
    }
  }
}

TEST(MatrixFillTest, OnesFillEverything) {
  Matrix one(1, 1);
  FillOnes(one);
  EXPECT_EQ(one, Rows({{1}}));
  Matrix wide(2, 3);
  FillOnes(wide);
  EXPECT_EQ(wide, Rows({{1, 1, 1}, {1, 1, 1}}));
}

TEST(MatrixFillTest, IdentityOfAWideMatrixHasAZeroColumn) {
  Matrix wide(2, 3);
  EXPECT_TRUE(FillIdentity(wide));
  EXPECT_EQ(wide, Rows({{1, 0, 0}, {0, 1, 0}}));
}

TEST(MatrixFillTest, IdentityOfATallMatrixLeavesItAndKeepsTheEntriesInside) {
  Matrix tall(3, 2);
  EXPECT_FALSE(FillIdentity(tall));
  EXPECT_EQ(tall, Rows({{1, 0}, {0, 1}, {0, 0}}));
}

TEST(MatrixFillTest, ASymmetricFillOfAWideMatrixStopsAtTheFirstMirrorOutside) {
  Matrix wide(2, 3);
  EXPECT_FALSE(FillRandom(
      wide, {0, 1, true, false}, [] { return 0.5f; }, unheard));
  EXPECT_EQ(wide, Rows({{0.5, 0.5, 0.5}, {0.5, 0, 0}}));
}

TEST(MatrixFillTest, ASymmetricFillOfATallMatrixMirrorsItsUpperTriangle) {
  Matrix tall(3, 2);
  float next = 0;
  EXPECT_TRUE(FillRandom(
      tall, {0, 8, true, false}, [&] { return next += 0.125f; }, unheard));
  EXPECT_EQ(tall, Rows({{1, 2}, {2, 3}, {0, 0}}));
}

TEST(MatrixFillTest, EqualBoundsGiveThatNumberEverywhere) {
  testing::Dice dice(702);
  Matrix A(3, 3);
  EXPECT_TRUE(FillRandom(A, {2.5, 2.5, false, false}, Drawing(dice), unheard));
  for (std::size_t k = 0; k < A.Size(); ++k) EXPECT_EQ(A.Data()[k], 2.5);
}

TEST(MatrixFillTest, SymmetricWholeNumbersLieWithinTheBounds) {
  testing::Dice dice(703);
  for (int round = 0; round < 200; ++round) {
    Matrix A(3, 3);
    EXPECT_TRUE(FillRandom(A, {-10, 10, true, true}, Drawing(dice), unheard));
    for (int i = 1; i <= 3; ++i) {
      for (int j = 1; j <= 3; ++j) {
        EXPECT_EQ(A(i, j), A(j, i));
        EXPECT_EQ(A(i, j), std::nearbyint(A(i, j)));
        EXPECT_LE(std::abs(A(i, j)), 10);
      }
    }
  }
}

TEST(MatrixFillTest, HalvesRoundToEven) {
  Matrix A(1, 4);
  float next = -1;
  EXPECT_TRUE(FillRandom(
      A, {0.5, 1.5, false, true}, [&] { return next += 1; }, unheard));
  EXPECT_EQ(A, Rows({{0, 2, 2, 4}}));
}

}  // namespace
}  // namespace qmx
