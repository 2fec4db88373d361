// SPDX-License-Identifier: MIT
#include <algorithm>

#include "base/fault.h"
#include "base/number_text.h"
#include "commands/lifecycle.h"
#include "support/core_bench.h"

namespace qmx {
namespace {

using test::Rows;
using test::WindowState;
using EigenTaskTest = test::Workbench;

TEST_F(EigenTaskTest, ADiagonalMatrixGivesItsDiagonalFromTheBottomUpAndTheTopLast) {
  random.sequence = {0.25F, 0.125F, 0.75F};
  EnterA(Rows({{1, 0, 0}, {0, 2, 0}, {0, 0, 3}}));
  Press(14);
  ASSERT_GE(screen.lines.size(), 6U);
  EXPECT_EQ(screen.lines[0], "REAL EIGENVALUES FOUND:");
  EXPECT_EQ(screen.lines[1], "EVL(3)=3");
  EXPECT_EQ(screen.lines[2], "EVL(2)=2");
  EXPECT_EQ(screen.lines[3], "EVL(1)=1");
  EXPECT_EQ(screen.lines[4], "");
  EXPECT_EQ(screen.lines[5], "UNIT EIGENVECTORS:");
  EXPECT_EQ(screen.lines[6], "EVL(3)=3");
  EXPECT_EQ(screen.lines[7].substr(0, 19), "          EVC(1,3)=");
  EXPECT_EQ(screen.lines.back(), test::DashRule());
  EXPECT_EQ(screen.lines.size(), 6U + 3 * 4 + 1);
  EXPECT_EQ(Array(kSlotEigenvalues), Rows({{3}, {2}, {1}}));
  EXPECT_EQ(screen.Text({"lblRowsEigenvalues"}), "3");
  EXPECT_EQ(screen.Text({"lblRowsEigenvectors"}), "3");
  EXPECT_EQ(screen.Text({"lblColsEigenvectors"}), "3");
  EXPECT_EQ(screen.beeps, 3);
  EXPECT_EQ(random.seeds.size(), 3U);
  EXPECT_TRUE(workspace.EigenvaluesComputed && workspace.EigenvectorsComputed);
  EXPECT_TRUE(screen.resultsShown);
  EXPECT_EQ(screen.windows[kSlotEigenvectors], WindowState::kShown);
}

TEST_F(EigenTaskTest, ARotationHasNoRealEigenvalues) {
  EnterA(Rows({{0, -1}, {1, 0}}));
  Press(14);
  const std::vector<std::string> expected = {
      "NO EIGENVALUES FOUND.  THE REASON MAY BE ONE OF:",
      "",
      " - MATRIX HAS NO REAL EIGENVALUES",
      " - SPECIFIED ERROR TOO SMALL",
      " - SPECIFIED MAXIMUM # OF CYCLES TOO FEW",
      " - ALGORITHM BREAKDOWN: SOME MATRICES DON'T YIELD TO THE",
      "   PROCESS IN THEIR ORIGINAL FORM.  THIS GENERALLY MAY",
      "   BE REMEDIED BY INTRODUCING AN ARBITRARY SHIFT.",
      test::DashRule()};
  EXPECT_EQ(screen.lines, expected);
  EXPECT_FALSE(workspace.EigenvaluesComputed);
  EXPECT_FALSE(screen.frames[kSlotEigenvalues]);
  EXPECT_TRUE(NoMessage());
}

TEST_F(EigenTaskTest, TwoRunsLeaveTwoReportsEachWithItsOwnClosingLine) {
  EnterA(Rows({{2, 0}, {0, 1}}));
  Press(14);
  const std::size_t one = screen.lines.size();
  Press(14);
  EXPECT_EQ(screen.lines.size(), 2 * one);
  EXPECT_EQ(screen.lines[one - 1], test::DashRule());
  EXPECT_EQ(screen.lines[2 * one - 1], test::DashRule());
}

TEST_F(EigenTaskTest, AOneByOneMatrixEndsInASubscriptFault) {
  EnterA(Rows({{5}}));
  try {
    Press(14);
    FAIL();
  } catch (const RuntimeFault& fault) {
    EXPECT_EQ(fault.Number(), Fault::kSubscriptOutOfRange);
  }
  EXPECT_FALSE(workspace.EigenvaluesComputed);
  EXPECT_EQ(screen.workDepth, 0);
}

TEST_F(EigenTaskTest, AOneByOneMatrixWithABoundThatCannotBeMetFindsNothing) {
  EnterA(Rows({{5}}));
  screen.Type(txtError, "-1");
  Press(14);
  EXPECT_EQ(screen.lines.front(), "NO EIGENVALUES FOUND.  THE REASON MAY BE ONE OF:");
}

TEST_F(EigenTaskTest, VectorsThatDoNotConvergeAreReportedWithTheLimit) {
  EnterA(Rows({{2, 1}, {1, 3}}));
  screen.Type(txtMaxcy, "0");
  screen.Type(txtError, "10");
  screen.Type(txtPert, "1000");
  Press(14);
  EXPECT_EQ(workspace.eigen.EigenCount, 2);
  screen.lines.clear();
  screen.Type(txtError, "1e-14");
  screen.Type(txtMaxcy, "30");
  Press(14);
  ASSERT_GT(workspace.eigen.EigenCount, 0);
  EXPECT_EQ(workspace.eigen.VectorStatus[0], 1);
  EXPECT_NE(
      std::find(screen.lines.begin(), screen.lines.end(), "***NO CONVERGENCE IN30 & CYCLES***"),
      screen.lines.end());
}

TEST_F(EigenTaskTest, WithoutAnyConvergedVectorOnlyEigenvaluesArePublished) {
  EnterA(Rows({{2, 1}, {1, 3}}));
  screen.Type(txtError, "1e-14");
  screen.Type(txtMaxcy, "30");
  screen.Type(txtPert, "1000");
  Press(14);
  EXPECT_TRUE(screen.frames[kSlotEigenvalues]);
  EXPECT_FALSE(screen.frames[kSlotEigenvectors]);
  EXPECT_FALSE(workspace.EigenvectorsComputed);
  EXPECT_EQ(screen.Text({"lblColsEigenvectors"}), "");
}

TEST_F(EigenTaskTest, AnExactlySingularShiftIsReportedAndKeepsTheStartVector) {
  EnterA(Rows({{2, 0}, {0, 1}}));
  screen.Type(txtPert, "0");
  Press(14);
  const auto& lines = screen.lines;
  const auto found = std::find(lines.begin(), lines.end(), "EVL(2)=1  YIELDS SINGULAR MATRIX.");
  ASSERT_NE(found, lines.end());
  EXPECT_EQ(*(found - 1), "");
  EXPECT_EQ(workspace.eigen.VectorStatus[0], -1);
  EXPECT_EQ(Array(kSlotEigenvectors)(1, 1), 0.25);
  EXPECT_EQ(Array(kSlotEigenvectors)(2, 1), 0.0);
  EXPECT_EQ(screen.beeps, 0);
}

TEST_F(EigenTaskTest, TheColumnsLabelCountsConvergedVectorsAndTheMatrixKeepsAll) {
  // With no additional shift one of the shifted matrices is exactly singular, the other is not.
  EnterA(Rows({{1, 0, 0}, {0, 2, 1}, {0, 1, 2}}));
  screen.Type(txtPert, "0");
  Press(14);
  ASSERT_EQ(workspace.eigen.EigenCount, 3);
  const int converged = workspace.eigen.ConvergedCount;
  ASSERT_GT(converged, 0);
  ASSERT_LT(converged, 3);
  EXPECT_EQ(screen.Text({"lblColsEigenvectors"}), CStr(converged));
  EXPECT_EQ(Array(kSlotEigenvectors).Cols(), 3);
  EXPECT_EQ(workspace.At(kSlotEigenvectors).cols, 3);
}

TEST_F(EigenTaskTest, TheShiftIndexIsCarriedFromRunToRun) {
  EnterA(Rows({{4, 1, 0}, {1, 3, 1}, {0, 1, 2}}));
  Press(14);
  const int carried = workspace.eigen.ShiftIndex;
  EXPECT_GT(carried, 0);
  Press(16);
  EXPECT_EQ(workspace.eigen.ShiftIndex, carried);
  Reset(kSlotA);
  EXPECT_EQ(workspace.eigen.ShiftIndex, 0);
}

TEST_F(EigenTaskTest, AFailedRunLeavesTheShiftsInTheEigenvalues) {
  EnterA(Rows({{1, 0, 0}, {0, 2, 0}, {0, 0, 3}}));
  Press(14);
  EnterB(Rows({{0, -1}, {1, 0}}));
  CopyInto(context, kSlotA, kSlotB);
  Press(14);
  EXPECT_EQ(workspace.eigen.EigenCount, 0);
  EXPECT_TRUE(workspace.EigenvaluesComputed);
  EXPECT_EQ(workspace.At(kSlotEigenvalues).rows, 3);
  EXPECT_EQ(Array(kSlotEigenvalues).Rows(), 2);
}

TEST_F(EigenTaskTest, TheDimensionsOfAAreReadFromTheFields) {
  EnterA(Rows({{1, 0, 5}, {0, 2, 6}, {7, 8, 9}}));
  screen.Type(txtRowsA, "2");
  screen.Type(txtColsA, "2");
  Press(14);
  EXPECT_EQ(Array(kSlotEigenvalues), Rows({{2}, {1}}));
}

}  // namespace
}  // namespace qmx
