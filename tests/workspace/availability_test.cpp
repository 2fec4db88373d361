// SPDX-License-Identifier: MIT
#include "workspace/availability.h"

#include "support/core_bench.h"

namespace qmx {
namespace {

using test::Rows;
using AvailabilityTest = test::Workbench;

TEST_F(AvailabilityTest, TheSlotTableHoldsWindowsCaptionsAndGrids) {
  struct Expected {
    std::string_view window;
    std::string_view caption;
    std::string_view rows;
    std::string_view cols;
  };
  const Expected expected[kSlotCount] = {
      {"frmA", "Matrix A", "txtRowsA", "txtColsA"},
      {"frmB", "Matrix B", "txtRowsB", "txtColsB"},
      {"frmSum", "A + B", "lblRowsSum", "lblColsSum"},
      {"frmDifference", "A - B", "lblRowsDifference", "lblColsDifference"},
      {"frmProduct", "A * B", "lblRowsProduct", "lblColsProduct"},
      {"frmLfactor", "L", "lblRowsLfactor", "lblColsLfactor"},
      {"frmUfactor", "U", "lblRowsUfactor", "lblColsUfactor"},
      {"frmQfactor", "Q", "lblRowsQfactor", "lblColsQfactor"},
      {"frmRfactor", "R", "lblRowsRfactor", "lblColsRfactor"},
      {"frmInverse", "Inverse of A", "lblRowsInverse", "lblColsInverse"},
      {"frmAdjoint", "Adjoint of A", "lblRowsAdjoint", "lblColsAdjoint"},
      {"frmTranspose", "Transpose of A", "lblRowsTranspose", "lblColsTranspose"},
      {"frmEigenvectors", "Eigenvectors found", "lblRowsEigenvectors", "lblColsEigenvectors"},
      {"frmEigenvalues", "Eigenvalues found", "lblRowsEigenvalues", "lblColsEigenvalues"},
      {"frmSolution", "System solution", "lblRowsSolution", "lblColsSolution"},
      {"frmCreated", "Created matrix", "txtRowsCreated", "txtColsCreated"},
      {"frmPermutation", "Permutation matrix", "lblRowsPermutation", "lblColsPermutation"},
      {"frmExchanges", "Map of exchanges", "lblRowsExchanges", "lblColsExchanges"},
      {"frmSystem", "System of linear equations", "txtEquations", "txtUnknowns"},
  };
  for (const Slot k : kAllSlots) {
    EXPECT_EQ(InfoOf(k).window, expected[k].window);
    EXPECT_EQ(InfoOf(k).caption, expected[k].caption);
    EXPECT_EQ(InfoOf(k).rows.name, expected[k].rows);
    EXPECT_EQ(InfoOf(k).cols.name, expected[k].cols);
  }
}

TEST_F(AvailabilityTest, AOneByOneMatrixHasATwoByTwoGrid) {
  EnterA(Rows({{5}}));
  EXPECT_EQ(screen.grids[kSlotA].rows, 2);
  EXPECT_EQ(screen.grids[kSlotA].cols, 2);
  EXPECT_EQ(screen.grids[kSlotA].Text(0, 1), "1");
  EXPECT_EQ(screen.grids[kSlotA].Text(1, 0), "1");
}

TEST_F(AvailabilityTest, AThirdShowsSevenDigitsNarrowAndFifteenWide) {
  workspace.At(kSlotSum).array = Rows({{1.0 / 3}});
  MarkAvailable(context, kSlotSum);
  Populate(context, kSlotSum);
  EXPECT_EQ(screen.grids[kSlotSum].Text(1, 1), "0.3333333");
  screen.SetWide(kSlotSum, true);
  Populate(context, kSlotSum);
  EXPECT_EQ(screen.grids[kSlotSum].Text(1, 1), "0.333333333333333");
}

TEST_F(AvailabilityTest, AResultGetsItsFrameFlagAndButtons) {
  workspace.At(kSlotQ).array = Rows({{1}, {0}});
  MarkAvailable(context, kSlotQ);
  EXPECT_FALSE(workspace.QRComputed) << "R is not there yet";
  MarkAvailable(context, kSlotR);
  EXPECT_TRUE(workspace.QRComputed);
  EXPECT_TRUE(screen.frames[kSlotQ]);
  for (const Control& button : {cmdShow(7), cmdSave(7), cmdPrint(7), cmdIntoA(7), cmdIntoB(7)}) {
    EXPECT_TRUE(screen.Enabled(button)) << button.ObjectName();
  }
  EXPECT_EQ(screen.grids[kSlotQ].rows, 3);
}

TEST_F(AvailabilityTest, CreatedEnablesItsButtons) {
  workspace.At(kSlotCreated).array = Rows({{1}});
  MarkAvailable(context, kSlotCreated);
  EXPECT_TRUE(workspace.CreatedPresent);
  for (const Control& button :
       {cmdShow(15), cmdSave(15), cmdPrint(15), cmdIntoA(15), cmdIntoB(15)}) {
    EXPECT_TRUE(screen.Enabled(button)) << button.ObjectName();
  }
}

TEST_F(AvailabilityTest, ExchangesSetUpTheSystemsGridAsWell) {
  workspace.System().array = Rows({{1, 2}});
  workspace.At(kSlotExchanges).array = Rows({{1}});
  MarkAvailable(context, kSlotExchanges);
  EXPECT_TRUE(screen.frames[kSlotExchanges]);
  EXPECT_EQ(screen.grids[kSlotSystem].cols, 3);
  EXPECT_EQ(screen.grids[kSlotSystem].Text(0, 2), " =  R.H.S.");
}

TEST_F(AvailabilityTest, TheSolutionIsLabelledBesideItsValuesWithoutAHeaderRow) {
  workspace.At(kSlotSolution).array = Rows({{4}, {5}});
  MarkAvailable(context, kSlotSolution);
  Populate(context, kSlotSolution);
  const auto& grid = screen.grids[kSlotSolution];
  EXPECT_EQ(grid.rows, 2);
  EXPECT_EQ(grid.cols, 2);
  EXPECT_EQ(grid.Text(0, 0), "  x(1) = ");
  EXPECT_EQ(grid.Text(0, 1), "4");
  EXPECT_EQ(grid.Text(1, 0), "  x(2) = ");
  EXPECT_EQ(grid.Text(1, 1), "5");
}

/// Two eigenvalues of a matrix of order 3, of which the second has a converged vector.
void MakeEigenResult(Workspace& workspace) {
  workspace.At(kSlotEigenvalues).array = Rows({{4}, {1.0 / 3}});
  workspace.At(kSlotEigenvectors).array = Rows({{0.1, 0.5}, {0.2, 0.25}, {0.3, -1.0 / 3}});
  workspace.eigen.EigenOrigin = {3, 1};
  workspace.eigen.VectorStatus = {1, 0};
  workspace.eigen.EigenCount = 2;
  workspace.eigen.ConvergedCount = 1;
}

TEST_F(AvailabilityTest, EigenvaluesAreLabelledByTheirPositionInA) {
  MakeEigenResult(workspace);
  MarkAvailable(context, kSlotEigenvalues);
  Populate(context, kSlotEigenvalues);
  const auto& grid = screen.grids[kSlotEigenvalues];
  EXPECT_EQ(grid.Text(0, 0), "EVL(3)=");
  EXPECT_EQ(grid.Text(0, 1), "4");
  EXPECT_EQ(grid.Text(1, 0), "EVL(1)=");
  EXPECT_EQ(grid.Text(1, 1), "0.3333333");
}

TEST_F(AvailabilityTest, EigenvectorsStandInBlueBelowTheirEigenvaluesInRed) {
  MakeEigenResult(workspace);
  MarkAvailable(context, kSlotEigenvectors);
  Populate(context, kSlotEigenvectors);
  const auto& grid = screen.grids[kSlotEigenvectors];
  EXPECT_EQ(grid.rows, 4);
  EXPECT_EQ(grid.cols, 3);
  EXPECT_EQ(grid.Text(0, 0), "Eigenvalues =");
  EXPECT_EQ(grid.Text(1, 0), "Eigenvectors");
  EXPECT_EQ(grid.Text(2, 0), "2");
  EXPECT_EQ(grid.Text(0, 1), "4");
  EXPECT_EQ(grid.Text(0, 2), "0.3333333");
  EXPECT_EQ(grid.Text(1, 2), "0.5");
  EXPECT_EQ(grid.Text(3, 2), "-0.3333333");
  for (int c = 0; c <= 2; ++c) EXPECT_EQ(grid.colours.at({0, c}), Colour::kRed);
  EXPECT_EQ(grid.colours.at({1, 0}), Colour::kBlue);
  EXPECT_EQ(grid.colour, Colour::kBlue);
}

TEST_F(AvailabilityTest, ColumnsWithoutAConvergedVectorKeepTheirTexts) {
  MakeEigenResult(workspace);
  workspace.eigen.VectorStatus = {0, 0};
  MarkAvailable(context, kSlotEigenvectors);
  Populate(context, kSlotEigenvectors);
  workspace.At(kSlotEigenvectors).array = Rows({{9, 8}, {9, 8}, {9, 8}});
  workspace.eigen.VectorStatus = {-1, 0};
  MarkAvailable(context, kSlotEigenvectors);
  Populate(context, kSlotEigenvectors);
  EXPECT_EQ(screen.grids[kSlotEigenvectors].Text(2, 1), "0.2");
  EXPECT_EQ(screen.grids[kSlotEigenvectors].Text(2, 2), "8");
}

}  // namespace
}  // namespace qmx
