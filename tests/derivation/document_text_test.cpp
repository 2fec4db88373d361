// SPDX-License-Identifier: MIT
#include "derivation/document_text.h"

#include <gtest/gtest.h>

#include "derivation/document_sample.h"

namespace qmx::test {
namespace {

std::string TextOf(const Block& block, NumberForm form = NumberForm::kBoth) {
  // A heading in front, so that the title takes no part.
  const std::string text = PlainText({"", {Heading{"H", 1}, block}}, form);
  return text.substr(std::string("H\n=\n\n").size());
}

TEST(DocumentText, EverythingIsWrittenAsItStands) {
  EXPECT_EQ(PlainText(EverythingDocument(), NumberForm::kBoth),
            R"(Steps of A & B
==============

Elimination
-----------

Row 2 minus 1/2 of row 1

The pivot is 2 < -3√5/4; … is not known.

    A⁻¹ · x₃ = det Bᵀ − (-1/2 (-0.5))

    S → ⎡ [2]             1 │  *-5* ⎤
        ⎣  0   1/3 (0.3334) │    1  ⎦ ←

    │ 1   ·  │ ≠ √2
    │ 3  »4« │

Cycle  Shift_0
-----  --------
1      1.5E-07
last   λ₁ ≈ 2.5

[ ] around a number: the pivot.
← behind a row: the step has changed it.
* * around a number: what was found.
» « around a number: the element asked about.
)");
}

TEST(DocumentText, PointsStandBelowEachOther) {
  EXPECT_EQ(TextOf(Formula({ShownOf(3, 2, {"1.25", "-10", "10", "0.5", "1E-07", "2"})})),
            "    ⎡  1.25   -10   ⎤\n"
            "    ⎢ 10        0.5 ⎥\n"
            "    ⎣  1E-07    2   ⎦\n");
}

TEST(DocumentText, ALineOfOneRowOrNoneHasPlainBrackets) {
  EXPECT_EQ(TextOf(Formula({ShownOf(1, 2, {"1", "2"})})), "    [ 1  2 ]\n");
  EXPECT_EQ(TextOf(Formula({ShownOf(0, 2, {})})), "    [ ]\n");
}

TEST(DocumentText, EachFormShowsItsOwn) {
  const Line line = Sentence({Words{"It is "}, PartlyHeld("0.3334", 5, "1", "3"), Words{"."}});
  EXPECT_EQ(TextOf(line, NumberForm::kFractions), "It is 1/3.\n");
  EXPECT_EQ(TextOf(line, NumberForm::kDecimals), "It is 0.3334.\n");
  EXPECT_EQ(TextOf(line, NumberForm::kBoth), "It is 1/3 (0.3334).\n");
}

TEST(DocumentText, AFormulaWiderThanAPageIsBrokenBehindAMatrix) {
  const std::vector<std::string> wide(4, "123456789012345");
  const ShownMatrix m = ShownOf(1, 4, wide);
  EXPECT_EQ(TextOf(Formula({m, Operator{"·"}, m})),
            "    [ 123456789012345  123456789012345  123456789012345  123456789012345 ]\n"
            "    · [ 123456789012345  123456789012345  123456789012345  123456789012345 ]\n");
}

TEST(DocumentText, IndicesWithoutASignOfTheirOwnAreWrittenOut) {
  EXPECT_EQ(TextOf(Formula({Name{"x", "max"}})), "    xₘₐₓ\n");
  EXPECT_EQ(TextOf(Formula({Name{"x", "12", "k+1"}})), "    x₁₂ᵏ⁺¹\n");
  EXPECT_EQ(TextOf(Formula({Name{"A", "", "H"}})), "    A^H\n");
  EXPECT_EQ(TextOf(Formula({Name{"x", "old"}})), "    x_(old)\n");
}

TEST(DocumentText, ATitleIsWrittenWhereTheDocumentHasNoHeadingOfItsOwn) {
  EXPECT_EQ(PlainText({"Nothing", {}}, NumberForm::kBoth), "Nothing\n=======\n");
}

TEST(DocumentText, AMatrixIsReadAloudRowByRow) {
  EXPECT_EQ(SpokenText(EverythingDocument(), NumberForm::kBoth),
            "Steps of A & B\n"
            "Elimination\n"
            "Row 2 minus 1/2 of row 1\n"
            "The pivot is 2 < -3 times the square root of 5/4; a number not told is not known.\n"
            "A to the power -1 times x 3 equals det B transposed minus -1/2, as a decimal -0.5\n"
            "S becomes the matrix of 2 rows and 3 columns: row 1: pivot 2, 1, bar, found -5; "
            "row 2, changed: 0, 1/3, as a decimal 0.3334 of which 0.333 holds, bar, 1;\n"
            "the determinant of 2 rows and 2 columns: row 1: 1, left out; row 2: 3, asked about 4; "
            "is not "
            "the square root of 2\n"
            "Cycle: 1; Shift_0: 1.5E-07\n"
            "Cycle: last; Shift_0: λ 1 is about 2.5\n");
}

TEST(DocumentText, ANumberNothingOfWhichHoldsIsToldSo) {
  EXPECT_EQ(SpokenLine(Sentence({PartlyHeld("-1E-17", 1, "0", "1")}), NumberForm::kDecimals),
            "-1E-17 of which no digit holds");
  EXPECT_EQ(SpokenLine(Sentence({Shown("", "-1", "2", "3")}), NumberForm::kBoth),
            "minus the square root of 3/2");
}

}  // namespace
}  // namespace qmx::test
