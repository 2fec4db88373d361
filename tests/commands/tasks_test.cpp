// SPDX-License-Identifier: MIT
#include "commands/tasks.h"

#include "commands/lifecycle.h"
#include "commands/parameters.h"
#include "support/core_bench.h"

namespace qmx {
namespace {

using test::Rows;
using test::WindowState;
using TasksTest = test::Workbench;

TEST_F(TasksTest, SumDifferenceAndProductArePublished) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  EnterB(Rows({{5, 6}, {7, 8}}));
  for (const int task : {0, 1, 2}) Press(task);
  EXPECT_EQ(Array(kSlotSum), Rows({{6, 8}, {10, 12}}));
  EXPECT_EQ(Array(kSlotDifference), Rows({{-4, -4}, {-4, -4}}));
  EXPECT_EQ(Array(kSlotProduct), Rows({{19, 22}, {43, 50}}));
  EXPECT_TRUE(workspace.SumComputed && workspace.DifferenceComputed && workspace.ProductComputed);
  EXPECT_EQ(screen.Text({"lblRowsProduct"}), "2");
  EXPECT_EQ(screen.Text({"lblColsProduct"}), "2");
  EXPECT_EQ(screen.windows[kSlotProduct], WindowState::kShown);
  EXPECT_EQ(screen.grids[kSlotProduct].Text(2, 1), "43");
  EXPECT_EQ(screen.workDepth, 0);
}

TEST_F(TasksTest, TheTraceHasALeadingBlankOrAMinus) {
  EnterA(Rows({{1, 0}, {0, 2.5}}));
  Press(4);
  EXPECT_EQ(screen.Text(lblTraceOfA), " 3.5");
  EnterB(Rows({{-1, 0}, {0, 0.5}}));
  CopyInto(context, kSlotA, kSlotB);
  Press(4);
  EXPECT_EQ(screen.Text(lblTraceOfA), "-.5");
  EXPECT_EQ(workspace.trace, -0.5);
}

TEST_F(TasksTest, TheDeterminantIsShownByTheScalarRule) {
  EnterA(Rows({{0, 1}, {1, 0}}));
  Press(3);
  EXPECT_EQ(screen.Text(lblDeterminantOfA), "-1");
  Reset(kSlotA);
  EnterA(Rows({{2, 1}, {2, 5}}));
  Press(3);
  EXPECT_EQ(screen.Text(lblDeterminantOfA), " 8");
  Reset(kSlotA);
  EnterA(Rows({{1, 0}, {2, 0}}));
  Press(3);
  EXPECT_EQ(screen.Text(lblDeterminantOfA), " 0");
  Reset(kSlotA);
  EnterA(Rows({{5}}));
  Press(3);
  EXPECT_EQ(screen.Text(lblDeterminantOfA), " 5");
  Reset(kSlotA);
  EnterA(Rows({{1.23456789012345e20}}));
  Press(3);
  EXPECT_EQ(screen.Text(lblDeterminantOfA), " 1.2345678901E+20");
}

TEST_F(TasksTest, TheTransposeTakesTheDimensionsFromTheFields) {
  EnterA(Rows({{1, 2, 3}}));
  Press(15);
  EXPECT_EQ(Array(kSlotTranspose), Rows({{1}, {2}, {3}}));
  screen.Type(txtColsA, "2");
  Press(15);
  EXPECT_EQ(Array(kSlotTranspose), Rows({{1}, {2}}));
  EXPECT_EQ(workspace.A().cols, 2);
  EXPECT_EQ(Array(kSlotA), Rows({{1, 2, 3}}));
}

TEST_F(TasksTest, ATransposeBeyondTheArrayIsASubscriptFault) {
  EnterA(Rows({{1, 2, 3}}));
  screen.Type(txtRowsA, "2");
  EXPECT_EQ(FaultOf(15), 9);
  EXPECT_FALSE(workspace.TransposeComputed);
}

TEST_F(TasksTest, ATransposeWithABadFieldIsRefused) {
  EnterA(Rows({{1, 2, 3}}));
  screen.Type(txtRowsA, "one");
  Press(15);
  EXPECT_EQ(screen.LastMessage(), "Rows of A: \"one\"\nThis must be a whole number of at least 0.");
  EXPECT_FALSE(workspace.TransposeComputed);
}

TEST_F(TasksTest, ScalingUsesTheLeadingNumberOfItsField) {
  EnterA(Rows({{1, -2}}));
  screen.Type(txtScalar, "3 apples");
  Press(16);
  EXPECT_EQ(Array(kSlotA), Rows({{3, -6}}));
  EXPECT_EQ(screen.grids[kSlotA].Text(1, 2), "-6");
  screen.Type(txtScalar, "apples");
  Press(16);
  EXPECT_EQ(Array(kSlotA), Rows({{0, 0}}));
}

TEST_F(TasksTest, ShiftingReachesTheLeadingDiagonalOnly) {
  EnterA(Rows({{1, 2, 3}, {4, 5, 6}}));
  Press(17);
  EXPECT_EQ(Array(kSlotA), Rows({{2, 2, 3}, {4, 6, 6}}));
}

TEST_F(TasksTest, ScalingAndShiftingLeaveResultsAlone) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  Press(15);
  Press(16);
  Press(17);
  EXPECT_TRUE(workspace.TransposeComputed);
  EXPECT_EQ(Array(kSlotTranspose), Rows({{1, 3}, {2, 4}}));
}

TEST_F(TasksTest, SymmetryIsExact) {
  EnterA(Rows({{5}}));
  Press(19);
  EXPECT_EQ(screen.Text(lblSymmetry), "Yes");
  Reset(kSlotA);
  EnterA(Rows({{1, 1e-300}, {0, 1}}));
  Press(19);
  EXPECT_EQ(screen.Text(lblSymmetry), "No");
  EXPECT_FALSE(workspace.AIsSymmetric);
  EXPECT_TRUE(workspace.SymmetryComputed);
}

TEST_F(TasksTest, ASingularMatrixIsNotInvertible) {
  EnterA(Rows({{2, 0}, {0, 4}}));
  Press(5);
  Press(7);
  const Matrix oldInverse = Array(kSlotInverse);
  EnterB(Rows({{1, 2}, {2, 4}}));
  CopyInto(context, kSlotA, kSlotB);
  for (const int task : {5, 7}) {
    screen.messages.clear();
    Press(task);
    ASSERT_EQ(screen.messages.size(), 1U);
    EXPECT_EQ(screen.messages[0].text, "MATRIX IS NOT INVERTIBLE.");
    EXPECT_EQ(screen.messages[0].icon, Icon::kNone);
    EXPECT_EQ(screen.messages[0].title, "Orvane");
  }
  EXPECT_EQ(Array(kSlotInverse), oldInverse);
  EXPECT_TRUE(workspace.InverseComputed);
  EXPECT_EQ(screen.grids[kSlotInverse].Text(1, 1), "0.5");
}

TEST_F(TasksTest, TheAdjointOfASingularMatrixExistsByCofactors) {
  EnterA(Rows({{1, 2}, {2, 4}}));
  Press(6);
  EXPECT_EQ(Array(kSlotAdjoint), Rows({{4, -2}, {-2, 1}}));
  Press(7);
  EXPECT_EQ(screen.LastMessage(), "MATRIX IS NOT INVERTIBLE.");
  EXPECT_EQ(Array(kSlotAdjoint), Rows({{4, -2}, {-2, 1}}));
}

TEST_F(TasksTest, LUWithExchangesPublishesFourMatrices) {
  EnterA(Rows({{0, 1}, {1, 0}}));
  Press(8);
  EXPECT_EQ(Array(kSlotL), Rows({{1, 0}, {0, 1}}));
  EXPECT_EQ(Array(kSlotU), Rows({{1, 0}, {0, 1}}));
  EXPECT_EQ(Array(kSlotPermutation), Rows({{0, 1}, {1, 0}}));
  EXPECT_EQ(Array(kSlotExchanges), Rows({{2}, {1}}));
  EXPECT_EQ(screen.Text({"lblRowsExchanges"}), "2");
  EXPECT_EQ(screen.windows[kSlotExchanges], WindowState::kShown);
  EXPECT_TRUE(screen.frames[kSlotPermutation]);
  EXPECT_TRUE(workspace.LUComputed);
}

TEST_F(TasksTest, LUWithoutExchangesLeavesPermutationAndExchangesAlone) {
  EnterA(Rows({{0, 1}, {1, 0}}));
  Press(8);
  EnterB(Rows({{4, 1}, {1, 4}}));
  CopyInto(context, kSlotA, kSlotB);
  Press(8);
  EXPECT_EQ(Array(kSlotPermutation), Rows({{0, 1}, {1, 0}}));
  EXPECT_EQ(screen.grids[kSlotExchanges].Text(1, 1), "2");
  // The record itself is that of the last run.
  EXPECT_EQ(Array(kSlotExchanges), Rows({{1}, {2}}));
}

TEST_F(TasksTest, LUWithoutPivotingRefusesAZeroPivotOverANonZeroElement) {
  EnterA(Rows({{2, 4, 6}, {1, 2, 5}, {1, 3, 1}}));
  screen.Select(OptPivot(1));
  Press(8);
  ASSERT_EQ(screen.messages.size(), 1U);
  EXPECT_EQ(screen.messages[0].text, "CAN'T FACTOR WITHOUT PIVOTING.");
  EXPECT_EQ(screen.messages[0].icon, Icon::kNone);
  EXPECT_FALSE(workspace.LUComputed);
  EXPECT_FALSE(screen.frames[kSlotU]);
  EXPECT_EQ(screen.Text({"lblRowsLfactor"}), "3");
  EXPECT_EQ(screen.Text({"lblColsUfactor"}), "3");
  CopyInto(context, kSlotB, kSlotU);
  EXPECT_EQ(Array(kSlotB), Rows({{2, 4, 6}, {0.5, 0, 2}, {0.5, 1, -2}}));
}

TEST_F(TasksTest, StoredFactorsAreThoseOfTheFirstSquareMatrix) {
  EnterA(Rows({{1, 2, 3}, {4, 5, 6}}));
  Press(8);
  EXPECT_FALSE(workspace.StoredFactorsValid);
  Reset(kSlotA);
  EnterA(Rows({{2, 0}, {0, 2}}));
  Press(8);
  EXPECT_TRUE(workspace.StoredFactorsValid);
  EXPECT_TRUE(screen.Enabled(cmdSaveLU));
  EXPECT_EQ(workspace.storedFactors.exchangeRows, 0);
  EXPECT_EQ(workspace.storedFactors.exchangeCols, 1);
  Reset(kSlotA);
  EnterA(Rows({{3, 0}, {0, 3}}));
  Press(8);
  EXPECT_EQ(workspace.storedFactors.U, Rows({{2, 0}, {0, 2}}));
}

TEST_F(TasksTest, FactorsStoredWhileSolvingByFactorsOpenTheSystem) {
  SelectSystemMethod(context, 1);
  EnterA(Rows({{2, 0, 0}, {0, 2, 0}, {0, 0, 2}}));
  Press(8);
  EXPECT_EQ(screen.Text(txtEquations), "3");
  EXPECT_EQ(screen.Text(txtUnknowns), "3");
  EXPECT_TRUE(screen.Enabled(cmdCreateSystem));
  EXPECT_TRUE(screen.Enabled(cmdRetrieveSystem));
}

TEST_F(TasksTest, QROfADependentColumnCannotFactor) {
  EnterA(Rows({{1, 0}, {0, 0}}));
  Press(9);
  ASSERT_EQ(screen.messages.size(), 1U);
  EXPECT_EQ(screen.messages[0].text, "CAN'T FACTOR.");
  EXPECT_EQ(screen.messages[0].icon, Icon::kNone);
  EXPECT_FALSE(workspace.QRComputed);
  EXPECT_EQ(Array(kSlotQ), Rows({{1, 0}, {0, 0}}));
  EXPECT_EQ(Array(kSlotR), Rows({{1, 0}, {0, 0}}));
  EXPECT_EQ(screen.Text({"lblRowsQfactor"}), "2");
  EXPECT_EQ(screen.windows[kSlotQ], WindowState::kNone);
}

TEST_F(TasksTest, QRIsPublished) {
  EnterA(Rows({{3}, {4}}));
  Press(9);
  EXPECT_EQ(Array(kSlotQ), Rows({{0.6}, {0.8}}));
  EXPECT_EQ(Array(kSlotR), Rows({{5}}));
  EXPECT_EQ(screen.Text({"lblRowsRfactor"}), "1");
  EXPECT_TRUE(workspace.QRComputed);
}

TEST_F(TasksTest, TheDefinitenessReportLinesUpPivotsAndMinors) {
  EnterA(Rows({{2, 1}, {1, 2}}));
  Press(10);
  EXPECT_EQ(screen.Text(lblDefiniteness), "Positive definite");
  EXPECT_EQ(screen.Text(lblSymmetry), "Yes");
  const std::vector<std::string> expected = {
      "SMALLEST (OVERALL) PIVOT (ABS. VALUE)=1.5",
      "SMALLEST PIVOTS (ABS.VAL.):   DETERMINANTS:",
      "2                             2",
      "1.5                           3",
      test::DashRule(),
  };
  EXPECT_EQ(screen.lines, expected);
  EXPECT_TRUE(screen.resultsShown);
  EXPECT_TRUE(screen.Enabled(cmdShowResults));
  EXPECT_EQ(screen.beeps, 1);
}

TEST_F(TasksTest, EachClassOfDefinitenessHasItsText) {
  const std::pair<Matrix, std::string> cases[] = {
      {Rows({{-2, 1}, {1, -2}}), "Negative definite"},
      {Rows({{1, 2}, {2, 1}}), "Indefinite"},
      {Rows({{0, 0}, {0, 1}}), "Semidefinite"},
      {Rows({{1, 0}, {0, 0}}), "Positive Semidefinite"},
      {Rows({{-1, 0}, {0, 0}}), "Negative Semidefinite"},
      {Rows({{0, 0}, {0, -1}}), "Semidefinite"},
      {Rows({{0}}), "Semidefinite"},
      {Rows({{5}}), "Positive definite"},
  };
  for (const auto& [matrix, text] : cases) {
    EnterA(matrix);
    Press(10);
    EXPECT_EQ(screen.Text(lblDefiniteness), text);
    EXPECT_EQ(workspace.definitenessText, text);
    Reset(kSlotA);
  }
}

TEST_F(TasksTest, DefinitenessOfAnAsymmetricMatrixIsRefused) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  Press(10);
  ASSERT_EQ(screen.messages.size(), 1U);
  EXPECT_EQ(screen.messages[0].text, "Matrix A is not symmetric.");
  EXPECT_EQ(screen.messages[0].icon, Icon::kCritical);
  EXPECT_EQ(screen.Text(lblSymmetry), "No");
  EXPECT_FALSE(workspace.DefinitenessComputed);
  EXPECT_TRUE(screen.lines.empty());
}

TEST_F(TasksTest, AnOverflowIsAFaultAndPublishesNothing) {
  EnterA(Rows({{1e308, 1e308}, {1e308, -1e308}}));
  EnterB(Rows({{1e308, 1e308}, {1e308, 1e308}}));
  for (const int task : {0, 2, 3, 10, 16}) {
    EXPECT_EQ(FaultOf(task), 6) << task;
  }
  EXPECT_FALSE(workspace.SumComputed || workspace.ProductComputed ||
               workspace.DeterminantComputed || workspace.DefinitenessComputed);
  EXPECT_FALSE(screen.frames[kSlotSum]);
  EXPECT_EQ(screen.workDepth, 0);
  EXPECT_EQ(Array(kSlotA), Rows({{1e308, 1e308}, {1e308, -1e308}}));
}

TEST_F(TasksTest, AnUnderflowIsNoFault) {
  EnterA(Rows({{1e-300}}));
  EnterB(Rows({{1e-300}}));
  Press(2);
  EXPECT_EQ(Array(kSlotProduct), Rows({{0}}));
}

TEST_F(TasksTest, AFaultMetBeforeATaskIsNotItsOwn) {
  EnterA(Rows({{1}}));
  volatile double zero = 0;
  volatile double infinite = 1 / zero;
  EXPECT_GT(infinite, 0);
  Press(4);
  EXPECT_EQ(screen.Text(lblTraceOfA), " 1");
}

TEST_F(TasksTest, AMatrixWithoutColumnsIsNoTrouble) {
  workspace.A().array = Matrix(3, 0);
  workspace.A().rows = 3;
  workspace.ACreated = true;
  screen.Type(txtRowsA, "3");
  screen.Type(txtColsA, "0");
  for (const int task : {8, 15, 16, 17, 9}) Press(task);
  EXPECT_EQ(Array(kSlotTranspose).Cols(), 3);
  EXPECT_EQ(Array(kSlotTranspose).Rows(), 0);
  EXPECT_EQ(Array(kSlotL), Rows({{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
}

}  // namespace
}  // namespace qmx
