// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>

#include "algorithms/elementary.h"
#include "base/number_text.h"
#include "derivation/document_text.h"
#include "derivation/operands.h"
#include "derivation/questions.h"
#include "derivation/replay.h"

namespace qmx::testing {
namespace {

Progress unheard;

TEST(ElementaryDerivation, ElementsAreThoseOfTheProgram) {
  OperandSource source(71);
  for (int round = 0; round < 150; ++round) {
    const int rows = source.Order();
    const int cols = source.Order();
    DerivationQuestion question = Ask(DerivationTask::kSum, source.Any(rows, cols));
    question.b = source.Any(rows, cols);
    question.row = source.Randomness().Integer(1, rows);
    question.col = source.Randomness().Integer(1, cols);
    const RationalMatrix a = AsShown(question.a);
    const RationalMatrix b = AsShown(question.b);
    const Rational& x = a(question.row, question.col);
    const Rational& y = b(question.row, question.col);
    const std::string index = CStr(question.row) + "," + CStr(question.col);
    const ShownNumber sum = ResultOf(Derive(question), "s" + index + "=");
    const Matrix C = Sum(question.a, question.b, unheard);
    EXPECT_EQ(sum.decimal, CStr(C(question.row, question.col)));
    if (sum.exact.IsKnown()) {
      EXPECT_TRUE(ValueOf(sum.exact) == x + y);
    }
    question.task = DerivationTask::kDifference;
    const ShownNumber difference = ResultOf(Derive(question), "d" + index + "=");
    const Matrix D = Difference(question.a, question.b, unheard);
    EXPECT_EQ(difference.decimal, CStr(D(question.row, question.col)));
    if (difference.exact.IsKnown()) {
      EXPECT_TRUE(ValueOf(difference.exact) == x - y);
    }
  }
}

TEST(ElementaryDerivation, ProductsAreThoseOfTheProgram) {
  OperandSource source(72);
  for (int round = 0; round < 100; ++round) {
    const int inner = source.Order();
    DerivationQuestion question = Ask(DerivationTask::kProduct, source.Any(source.Order(), inner));
    question.b = source.Any(inner, source.Order());
    const Document document = Derive(question);
    const Matrix C = Product(question.a, question.b, unheard);
    const RationalMatrix exact = ProductOf(AsShown(question.a), AsShown(question.b));
    for (int i = 1; i <= C.Rows(); ++i) {
      for (int j = 1; j <= C.Cols(); ++j) {
        const ShownNumber element = ResultOf(document, "p" + CStr(i) + "," + CStr(j) + "=");
        EXPECT_EQ(element.decimal, std::isfinite(C(i, j)) ? CStr(C(i, j)) : "");
        if (element.exact.IsKnown()) {
          EXPECT_TRUE(ValueOf(element.exact) == exact(i, j));
        }
      }
    }
  }
}

TEST(ElementaryDerivation, AChosenElementAloneIsToldAndMarked) {
  DerivationQuestion question = Ask(DerivationTask::kProduct, MatrixOf({{1, 2}, {3, 4}}));
  question.b = MatrixOf({{5, -6}, {7, 8}});
  question.row = 2;
  question.col = 2;
  const Document document = Derive(question);
  const std::string text = TextOf(document);
  EXPECT_NE(text.find("p2,2=3·(-6)+4·8=14\n"), std::string::npos) << text;
  EXPECT_EQ(text.find("p1,1="), std::string::npos) << text;
  EXPECT_NE(text.find("[1 2; 3 4]·[5 -6; 7 8]=[19 10; 43 14]"), std::string::npos) << text;
  std::vector<CellMark> marks;
  for (const Piece& piece : std::get<Line>(document.blocks.back()).pieces) {
    const auto* matrix = std::get_if<ShownMatrix>(&piece);
    if (matrix == nullptr) continue;
    for (const ShownCell& cell : matrix->cells) marks.push_back(cell.mark);
  }
  std::vector<CellMark> expected(12, CellMark::kNone);
  expected.back() = CellMark::kAsked;
  EXPECT_EQ(marks, expected);
}

TEST(ElementaryDerivation, ParenthesesStandBehindSignsAlone) {
  DerivationQuestion question = Ask(DerivationTask::kProduct, MatrixOf({{-2, -3}}));
  question.b = MatrixOf({{-5}, {7}});
  const std::string text = TextOf(Derive(question));
  EXPECT_NE(text.find("p1,1=-2·(-5)+(-3)·7=-11\n"), std::string::npos) << text;
  // The last element of the diagonal was computed as a little less than 0, which it is.
  const Matrix A = MatrixOf({{0.3, 0.9}, {0.1, 0.3}});
  const Document document = Derive(Ask(DerivationTask::kDeterminant, A));
  const std::string fractions = PlainText(document, NumberForm::kFractions);
  EXPECT_NE(fractions.find("det(A) = 3/10 · 0 = 0\n"), std::string::npos) << fractions;
}

TEST(ElementaryDerivation, RoundingIsSeenInTheDigitsThatDoNotHold) {
  // 0.1 + 0.2 shows as 0.3 and is; 0.3 - 0.1 - ... is seen where digits cancel.
  DerivationQuestion question = Ask(DerivationTask::kDifference, MatrixOf({{0.1 + 0.2}}));
  question.b = MatrixOf({{0.3}});
  const ShownNumber difference = ResultOf(Derive(question), "d1,1=");
  EXPECT_EQ(difference.decimal, "5.55111512312578E-17");
  EXPECT_EQ(difference.held, 0U);
  EXPECT_EQ(difference.exact, (ExactNumber{"0", "1", "1"}));
}

TEST(ElementaryDerivation, TraceAndTransposeAndSymmetry) {
  const Matrix A = MatrixOf({{0.5, 2}, {3, -4}});
  EXPECT_NE(TextOf(Derive(Ask(DerivationTask::kTrace, A))).find("tr(A)=1/2+(-4)=-7/2\n"),
            std::string::npos);
  EXPECT_NE(TextOf(Derive(Ask(DerivationTask::kTranspose, A))).find("A^T=[1/2 3; 2 -4]\n"),
            std::string::npos);
  const std::string text = TextOf(Derive(Ask(DerivationTask::kSymmetry, A)));
  EXPECT_NE(text.find("a1,2=2,a2,1=3\nThese differ: A is not symmetric.\n"), std::string::npos)
      << text;
  const std::string alike =
      TextOf(Derive(Ask(DerivationTask::kSymmetry, MatrixOf({{1, 0.1 + 0.2}, {0.3, 1}}))));
  EXPECT_NE(alike.find("They look alike and differ in digits that are not shown.\n"),
            std::string::npos)
      << alike;
}

}  // namespace
}  // namespace qmx::testing
