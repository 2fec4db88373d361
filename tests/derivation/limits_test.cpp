// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "derivation/operands.h"
#include "derivation/questions.h"
#include "derivation/replay.h"
#include "derivation/shown.h"

namespace qmx::testing {
namespace {

constexpr DerivationTask kTasks[] = {
    DerivationTask::kSum,          DerivationTask::kDifference,
    DerivationTask::kProduct,      DerivationTask::kTranspose,
    DerivationTask::kTrace,        DerivationTask::kSymmetry,
    DerivationTask::kDeterminant,  DerivationTask::kInverse,
    DerivationTask::kAdjoint,      DerivationTask::kLu,
    DerivationTask::kQr,           DerivationTask::kDefiniteness,
    DerivationTask::kEigenvalues,  DerivationTask::kEigenvectors,
    DerivationTask::kSolution,     DerivationTask::kSolutionByFactors,
    DerivationTask::kLeastSquares,
};

/// A question of a task about matrices of an order.
DerivationQuestion Question(DerivationTask task, int n, std::uint64_t seed) {
  Dice dice(seed);
  const bool isSystem = task == DerivationTask::kSolution || task == DerivationTask::kLeastSquares;
  DerivationQuestion question = Ask(task, IntegerMatrix(dice, n, isSystem ? n + 1 : n, 9));
  question.b = IntegerMatrix(dice, n, n, 9);
  question.system = IntegerMatrix(dice, n, 1, 9);
  question.eigen = {0.0005, 50, 0.1, 0.001};
  return question;
}

struct Enough {};

TEST(DerivationLimits, WhatLookThrowsEndsEveryDerivation) {
  for (const DerivationTask task : kTasks) {
    const DerivationQuestion question = Question(task, 5, 3);
    int looks = 0;
    ExactDeriver().Derive(question, [&looks] { ++looks; });
    EXPECT_GE(looks, 1) << static_cast<int>(task);
    int left = looks;
    EXPECT_THROW(ExactDeriver().Derive(question,
                                       [&left] {
                                         if (--left == 0) throw Enough();
                                       }),
                 Enough)
        << static_cast<int>(task);
  }
}

int LooksAt(const DerivationQuestion& question) {
  int looks = 0;
  ExactDeriver().Derive(question, [&looks] { ++looks; });
  return looks;
}

TEST(DerivationLimits, EveryLongLoopLooks) {
  constexpr int kOrder = 40;
  // The steps of one elimination, and the elements of a triangle with a column beside it.
  constexpr int kSteps = kOrder * (kOrder - 1) / 2;
  constexpr int kElements = kOrder * (kOrder + 1) / 2 + kOrder;
  EXPECT_GE(LooksAt(Question(DerivationTask::kLeastSquares, kOrder, 8)), kSteps + kElements);
  DerivationQuestion eigen = Question(DerivationTask::kEigenvalues, kOrder, 8);
  for (int i = 1; i <= kOrder; ++i) {
    for (int j = 1; j < i; ++j) eigen.a(i, j) = 0;
    eigen.a(i, i) = i;
  }
  const int before = LooksAt(eigen);
  eigen.task = DerivationTask::kEigenvectors;
  EXPECT_GE(LooksAt(eigen), before + kSteps);
  int looks = 0;
  ExactDeriver().ExactElements(Question(DerivationTask::kLu, 10, 8), [&looks] { ++looks; });
  EXPECT_GE(looks, 10 * 9 / 2 + 2 * 10);
}

TEST(DerivationLimits, LargeMatricesHaveShortDocuments) {
  for (const DerivationTask task : kTasks) {
    for (const int n : {9, 40, 150}) {
      const Document document = Derive(Question(task, n, 4));
      EXPECT_LE(document.blocks.size(), 250U) << static_cast<int>(task) << " " << n;
      for (const Block& block : document.blocks) {
        const auto* line = std::get_if<Line>(&block);
        if (line == nullptr) continue;
        std::size_t characters = 0;
        for (const Piece& piece : line->pieces) {
          const auto* matrix = std::get_if<ShownMatrix>(&piece);
          EXPECT_TRUE(matrix == nullptr || matrix->rows <= 12);
          if (const auto* words = std::get_if<Words>(&piece)) characters += words->text.size();
        }
        EXPECT_LE(characters, 500U) << TextOf(*line);
      }
    }
  }
}

TEST(DerivationLimits, StepsInTheMiddleAreLeftOutAndCounted) {
  const Document document = Derive(Question(DerivationTask::kDeterminant, 20, 5));
  const std::string text = TextOf(document);
  for (const char* line :
       {"### Column 1\n", "### Column 2\n", "### Columns 3 to 17\n15 steps like these are left out",
        "### Column 18\n", "### Column 19\n", "### All pivots\n"}) {
    EXPECT_NE(text.find(line), std::string::npos) << line << text;
  }
  EXPECT_EQ(text.find("### Column 3\n"), std::string::npos);
  const auto* table = [&document]() -> const Table* {
    for (const Block& block : document.blocks) {
      if (const auto* found = std::get_if<Table>(&block)) return found;
    }
    return nullptr;
  }();
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(table->rows.size(), 19U);
}

TEST(DerivationLimits, ThreeByThreeIsFullWhereEightIs) {
  for (const int n : {3, 8}) {
    const std::string text = TextOf(Derive(Question(DerivationTask::kInverse, n, 6)));
    EXPECT_EQ(text.find("left out"), std::string::npos);
  }
}

TEST(DerivationLimits, WrongShapesHaveNothingToDerive) {
  EXPECT_EQ(Derive(Ask(DerivationTask::kInverse, Matrix(2, 3))).title, "Nothing to derive");
  EXPECT_EQ(Derive(Ask(DerivationTask::kDeterminant, Matrix())).title, "Nothing to derive");
  DerivationQuestion byFactors = Question(DerivationTask::kSolutionByFactors, 2, 7);
  byFactors.exchanges = MatrixOf({{3}, {1}});
  EXPECT_EQ(Derive(byFactors).title, "Nothing to derive");
  EXPECT_TRUE(ExactDeriver().ExactElements(byFactors, {}).empty());
}

TEST(DerivationLimits, WhereRoundingAloneMakesAPivotTheWordsSaySo) {
  // Row 3 is the sum of the others, which doubles miss by a hair.
  const Matrix A = MatrixOf({{0.1, 0.2, 0.7}, {0.6, 0.5, 0.4}, {0.7, 0.7, 1.1}});
  const std::string text = TextOf(Derive(Ask(DerivationTask::kInverse, A)));
  EXPECT_NE(text.find("Without rounding this would be 0; the "), std::string::npos) << text;
  EXPECT_NE(text.find("from here on there are decimals alone."), std::string::npos) << text;
  const ShownMatrix inverse = MatrixOfFormula(Derive(Ask(DerivationTask::kInverse, A)), "A^-1=");
  ASSERT_EQ(inverse.rows, 3);
  for (const ShownCell& cell : inverse.cells) EXPECT_FALSE(cell.number.exact.IsKnown());
  EXPECT_TRUE(ExactDeriver().ExactElements(Ask(DerivationTask::kInverse, A), {}).empty());
}

TEST(DerivationLimits, WhatPartsInAStepLeftOutHasItsOwnHeading) {
  // v1·a5 is 1E-20, of which nothing is left beside 1 - 1.
  Matrix A(9, 9);
  for (int i = 1; i <= 9; ++i) A(i, i) = 1;
  A(2, 1) = 1e-20;
  A(3, 1) = -1;
  A(1, 5) = A(2, 5) = A(3, 5) = 1;
  const std::string qr = TextOf(Derive(Ask(DerivationTask::kQr, A)));
  EXPECT_NE(qr.find("### Column 5\nWithout rounding this would not be 0 but "), std::string::npos)
      << qr;
  // 9/10 - 3/10·3 is 0, which doubles miss; row 5 finds it as its pivot.
  Matrix S(9, 9);
  for (int i = 1; i <= 9; ++i) S(i, i) = 1;
  S(3, 3) = 0.1;
  S(3, 4) = S(4, 3) = 0.3;
  S(4, 4) = 0.9;
  const std::string minors = TextOf(Derive(Ask(DerivationTask::kDefiniteness, S)));
  EXPECT_NE(minors.find("### The leading minor of order 5\nWithout rounding this would be 0; the "),
            std::string::npos)
      << minors;
}

TEST(HeldCharacters, EndWhereTheDigitsDo) {
  const auto third = [] {
    qmx::Rational value(1);
    fmpq_div_fmpz(value.Get(), value.Get(), qmx::Rational(3).Numerator());
    return value;
  }();
  // Fifteen digits, rounded as they should be; the last one off; the last three off.
  EXPECT_EQ(HeldCharacters("0.333333333333333", third), 17U);
  EXPECT_EQ(HeldCharacters("0.333333333333334", third), 16U);
  EXPECT_EQ(HeldCharacters("0.333333333333433", third), 14U);
  EXPECT_EQ(HeldCharacters("-0.333333333333333", third), 0U);
  EXPECT_EQ(HeldCharacters("0", third), 0U);
  EXPECT_EQ(HeldCharacters("0", qmx::Rational()), 1U);
  EXPECT_EQ(HeldCharacters("5E-17", qmx::Rational()), 0U);
  EXPECT_EQ(HeldCharacters("3", qmx::Rational(3)), 1U);
  EXPECT_EQ(HeldCharacters("1.5E+20", qmx::Rational(3)), 0U);
}

TEST(ExactNumbers, AreWrittenUpToFortyDigits) {
  qmx::Rational value = qmx::PowerOfTen(39);
  EXPECT_EQ(ExactOf(value).numerator, "1" + std::string(39, '0'));
  fmpq_neg(value.Get(), value.Get());
  EXPECT_EQ(ExactOf(value).numerator, "-1" + std::string(39, '0'));
  EXPECT_FALSE(ExactOf(qmx::PowerOfTen(40)).IsKnown());
  EXPECT_FALSE(ExactOf(qmx::PowerOfTen(-40)).IsKnown());
  EXPECT_EQ(ExactOf(qmx::PowerOfTen(-39)).denominator, "1" + std::string(39, '0'));
}

}  // namespace
}  // namespace qmx::testing
