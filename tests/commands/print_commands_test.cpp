// SPDX-License-Identifier: MIT
#include "commands/print_commands.h"

#include <gtest/gtest.h>

#include "support/core_bench.h"
#include "support/core_samples.h"
#include "workspace/result_table.h"

namespace qmx {
namespace {

using test::Rows;
using Lines = std::vector<std::string>;

class PrintCommands : public test::Workbench {
 protected:
  void Hold(Slot slot, Matrix values) {
    workspace.At(slot).array = std::move(values);
    workspace.*ResultOf(slot).flag = true;
  }
  Lines Print(Slot slot) {
    printer.lines.clear();
    PrintSlot(context, slot);
    return printer.lines;
  }
  Lines Report() {
    printer.lines.clear();
    PrintReport(context);
    return printer.lines;
  }
};

TEST_F(PrintCommands, PrintsEachElementOnALineOfItsOwn) {
  Hold(kSlotA, Rows({{1, 2.5}, {-2.5, 1e20}}));
  EXPECT_EQ(Print(kSlotA), (Lines{"MATRIX [A]:", "A( 1 , 1 )= 1 ", "A( 1 , 2 )= 2.5 ", "",
                                  "A( 2 , 1 )=-2.5 ", "A( 2 , 2 )= 1E+20 ", ""}));
  EXPECT_EQ(printer.documents, 1);
}

struct Heading {
  Slot slot;
  const char* heading;
  const char* element;
};

TEST_F(PrintCommands, HasAHeadingAndAPrefixForEverySlot) {
  constexpr Heading kHeadings[] = {
      {kSlotA, "MATRIX [A]:", "A( 1 , 1 )= .5 "},
      {kSlotB, "MATRIX [B]:", "B( 1 , 1 )= .5 "},
      {kSlotSum, "SUM [A]+[B]:", "Sum( 1 , 1 )= .5 "},
      {kSlotDifference, "DIFFERENCE [A]-[B]:", "Difference( 1 , 1 )= .5 "},
      {kSlotProduct, "PRODUCT [A][B]:", "Product( 1 , 1 )= .5 "},
      {kSlotU, "UPPER TRIANGULAR FACTOR (U):", "U( 1 , 1 )= .5 "},
      {kSlotQ, "FACTOR WITH ORTHONORMAL COLUMNS (Q):", "Q( 1 , 1 )= .5 "},
      {kSlotR, "UPPER TRIANGULAR FACTOR (R):", "R( 1 , 1 )= .5 "},
      {kSlotInverse, "INVERSE OF A", "Inverse( 1 , 1 )= .5 "},
      {kSlotAdjoint, "ADJOINT OF A:", "Adjoint( 1 , 1 )= .5 "},
      {kSlotEigenvalues, "EIGENVALUES FOUND:", " .5 "},
      {kSlotSolution, "SOLUTION:", "x( 1 )= .5 "},
      {kSlotCreated, "SPECIAL CREATED MATRIX:", "Created( 1 , 1 )= .5 "},
      {kSlotPermutation, "PERMUTATION MATRIX:", "Permutation( 1 , 1 )= .5 "},
      {kSlotExchanges, "MAP OF ROW EXCHANGES:", " .5 "},
      {kSlotSystem, "SYSTEM OF EQUATIONS:", "System( 1 , 1 )= .5 "},
  };
  for (const auto& [slot, heading, element] : kHeadings) {
    EXPECT_EQ(Print(slot), Lines{heading});
    Hold(slot, Rows({{0.5}}));
    EXPECT_EQ(Print(slot), (Lines{heading, element, ""}));
  }
}

TEST_F(PrintCommands, PrintsLWithoutTheZerosAboveItsDiagonal) {
  Hold(kSlotL, Rows({{1}}));
  EXPECT_EQ(Print(kSlotL), (Lines{"LOWER TRIANGULAR FACTOR (L):", "L( 1 , 1 )= 1", ""}));
  Hold(kSlotL, Rows({{1, 0, 0}, {.5, 1, 0}, {-2, 3, 1}}));
  EXPECT_EQ(Print(kSlotL),
            (Lines{"LOWER TRIANGULAR FACTOR (L):", "L( 1 , 1 )= 1", "", "L( 2 , 1 )= .5 ",
                   "L( 2 , 2 )= 1", "", "L( 3 , 1 )=-2 ", "L( 3 , 2 )= 3 ", "L( 3 , 3 )= 1", ""}));
}

TEST_F(PrintCommands, PrintsUWithoutTheZerosBelowItsDiagonal) {
  Hold(kSlotU, Rows({{1, 2, 3}, {0, 4, 5}}));
  EXPECT_EQ(Print(kSlotU),
            (Lines{"UPPER TRIANGULAR FACTOR (U):", "U( 1 , 1 )= 1 ", "U( 1 , 2 )= 2 ",
                   "U( 1 , 3 )= 3 ", "", "U( 2 , 2 )= 4 ", "U( 2 , 3 )= 5 ", ""}));
  Hold(kSlotU, Rows({{1}, {0}}));
  EXPECT_EQ(Print(kSlotU), (Lines{"UPPER TRIANGULAR FACTOR (U):", "U( 1 , 1 )= 1 ", "", ""}));
}

TEST_F(PrintCommands, LeavesALineEmptyUnderTwoHeadings) {
  Hold(kSlotTranspose, Rows({{7}}));
  EXPECT_EQ(Print(kSlotTranspose), (Lines{"TRANSPOSE OF A:", "", "Transpose( 1 , 1 )= 7 ", ""}));
  EXPECT_EQ(Print(kSlotEigenvectors), (Lines{"UNIT EIGENVECTORS FOUND:", ""}));
}

TEST_F(PrintCommands, PrintsEigenvectorsOneAfterTheOther) {
  Hold(kSlotEigenvectors, Rows({{0.6, 0}, {0.8, 1}}));
  workspace.eigen.EigenOrigin = {2, 1};
  EXPECT_EQ(Print(kSlotEigenvectors),
            (Lines{"UNIT EIGENVECTORS FOUND:", "", "EVC( 1 , 2 )= .6 ", "EVC( 2 , 2 )= .8 ", "",
                   "EVC( 1 , 1 )= 0 ", "EVC( 2 , 1 )= 1 ", ""}));
}

TEST_F(PrintCommands, PrintsTheRightHandSideOfASystemByFactors) {
  Hold(kSlotSystem, Rows({{5}, {-0.5}}));
  workspace.SystemMethod = 1;
  EXPECT_EQ(Print(kSlotSystem), (Lines{"RIGHT-HAND SIDE OF SYSTEM SOLVED BY LU FACTORS:",
                                       "R.H.S.( 1 , 1 )= 5 ", "", "R.H.S.( 2 , 1 )=-.5 ", ""}));
  workspace.SystemMethod = 2;
  EXPECT_EQ(Print(kSlotSystem)[0], "SYSTEM OF EQUATIONS:");
}

TEST_F(PrintCommands, PrintsMatricesWithoutElements) {
  Hold(kSlotA, Matrix(2, 0));
  EXPECT_EQ(Print(kSlotA), (Lines{"MATRIX [A]:", "", ""}));
  Hold(kSlotSolution, Matrix(2, 0));
  EXPECT_EQ(Print(kSlotSolution), Lines{"SOLUTION:"});
}

TEST_F(PrintCommands, PrintsOneSlotInThePrintersOwnFont) {
  Print(kSlotA);
  EXPECT_EQ(printer.fonts, Lines{"Helvetica"});
}

TEST_F(PrintCommands, PrintsTheReportInCourierAndGivesTheFontBack) {
  Hold(kSlotA, Rows({{7}}));
  workspace.ACreated = true;
  Report();
  EXPECT_EQ(printer.fonts, (Lines{"Courier New", "Courier New", "Courier New"}));
  EXPECT_EQ(printer.font, "Helvetica");
  EXPECT_EQ(printer.documents, 1);
}

TEST_F(PrintCommands, ReportsNothingWhereNothingIs) { EXPECT_EQ(Report(), Lines{}); }

TEST_F(PrintCommands, ReportsTheScalars) {
  workspace.DeterminantComputed = workspace.TraceComputed = true;
  workspace.DefinitenessComputed = workspace.SymmetryComputed = true;
  workspace.determinant = -6.5;
  workspace.trace = 1.0 / 3;
  workspace.definitenessText = "Positive definite";
  workspace.symmetryText = "Yes";
  EXPECT_EQ(Report(), (Lines{"Determinant of A=-6.5 ", "Trace of A= .333333333333333 ",
                             "Definiteness of A:Positive definite", "Symmetric:Yes", ""}));
}

TEST_F(PrintCommands, ReportsTheAdjointWhereTheTransposeWasComputed) {
  Hold(kSlotTranspose, Rows({{7}}));
  workspace.TransposeComputed = true;
  EXPECT_EQ(Report(), Lines{"ADJOINT OF A:"});
  Hold(kSlotAdjoint, Rows({{3}}));
  EXPECT_EQ(Report(), (Lines{"ADJOINT OF A:", "Adjoint( 1 , 1 )= 3 ", ""}));
  workspace.TransposeComputed = false;
  workspace.AdjointComputed = true;
  EXPECT_EQ(Report(), Lines{});
}

TEST_F(PrintCommands, ReportsExchangesOnlyBesideFactorsAndNoPermutation) {
  for (const Slot slot : {kSlotL, kSlotU, kSlotPermutation, kSlotExchanges})
    Hold(slot, Rows({{1}}));
  workspace.LUComputed = false;
  EXPECT_EQ(Report(), Lines{});
  workspace.LUComputed = true;
  EXPECT_EQ(Report(), (Lines{"LOWER TRIANGULAR FACTOR (L):", "L( 1 , 1 )= 1", "",
                             "UPPER TRIANGULAR FACTOR (U):", "U( 1 , 1 )= 1 ", "",
                             "MAP OF ROW EXCHANGES:", " 1 ", ""}));
  workspace.ExchangesPresent = false;
  EXPECT_EQ(Report().size(), 6U);
}

TEST_F(PrintCommands, ReportsTheEigenParametersAsTheyAreTyped) {
  workspace.EigenvaluesComputed = true;
  screen.SetText(txtError, " 1e-9x");
  screen.SetText(txtPert, "");
  EXPECT_EQ(Report(), (Lines{"EIGENVALUES/EIGENVECTORS:", "", "               MAXIMUM ERROR: 1e-9x",
                             "         MAXIMUM # OF CYCLES:100", "  EIGENVALUE SHIFT CRITERION:.1",
                             "EIGENVECTOR ADDITIONAL SHIFT:"}));
}

TEST_F(PrintCommands, ReportsEachEigenvalueWithItsVectorBesideIt) {
  const Workspace everything = test::EverythingWorkspace();
  workspace.EigenvaluesComputed = true;
  workspace.eigen = everything.eigen;
  for (const Slot slot : {kSlotEigenvalues, kSlotEigenvectors})
    Hold(slot, everything.At(slot).array);
  const Lines all = Report();
  const std::string gap(39, ' ');
  const Lines wanted{
      "",
      "EIGENVALUES FOUND AND THEIR CORRESPONDING UNIT EIGENVECTORS:",
      "",
      "EVL( 3 )= 4                            EVC( 1 , 3 )= .6 ",
      gap + "EVC( 2 , 3 )= .8 ",
      gap + "EVC( 3 , 3 )= 0 ",
      "",
      "EVL( 1 )= .5                           ***EIGENVECTOR DID NOT CONVERGE.***",
      gap + "***REVIEW MAXIMUM ERROR.        ***",
      gap + "***REVIEW MAXIMUM # OF CYCLES.  ***",
      gap + "***REVIEW ADDITIONAL SHIFT.     ***",
      gap + "***BEST RESULT WAS:             ***",
      gap + "EVC( 1 , 1 )= .25 ",
      gap + "EVC( 2 , 1 )=-.75 ",
      gap + "EVC( 3 , 1 )= 1 ",
      "",
      "EVL( 2 )=-1                            ***ENCOUNTERED SINGULAR MATRIX. ***",
      gap + "***REVIEW ADDITIONAL SHIFT.     ***",
      "",
  };
  ASSERT_EQ(all.size(), 6 + wanted.size());
  EXPECT_EQ(Lines(all.begin() + 6, all.end()), wanted);
}

TEST_F(PrintCommands, EndsTheLineOfAnEigenvalueWithoutVectors) {
  workspace.EigenvaluesComputed = true;
  workspace.eigen = test::EverythingWorkspace().eigen;
  Hold(kSlotEigenvalues, Rows({{4}, {0.5}, {-1}}));
  const Lines all = Report();
  ASSERT_EQ(all.size(), 6U + 3 + 2 + 6 + 3);
  EXPECT_EQ(all[9], "EVL( 3 )= 4 ");
  EXPECT_EQ(all[10], "");
}

TEST_F(PrintCommands, ReportsEverythingInItsOrder) {
  workspace = test::EverythingWorkspace();
  Lines headings;
  for (const std::string& line : Report()) {
    if (!line.empty() && line[0] != ' ' && line.find("( ") == std::string::npos)
      headings.push_back(line);
  }
  EXPECT_EQ(headings, (Lines{"MATRIX [A]:",
                             "Determinant of A=-6.5 ",
                             "Trace of A= 1E+16 ",
                             "Definiteness of A:Positive definite",
                             "Symmetric:Yes",
                             "MATRIX [B]:",
                             "SUM [A]+[B]:",
                             "DIFFERENCE [A]-[B]:",
                             "PRODUCT [A][B]:",
                             "LOWER TRIANGULAR FACTOR (L):",
                             "UPPER TRIANGULAR FACTOR (U):",
                             "MAP OF ROW EXCHANGES:",
                             "FACTOR WITH ORTHONORMAL COLUMNS (Q):",
                             "UPPER TRIANGULAR FACTOR (R):",
                             "INVERSE OF A",
                             "ADJOINT OF A:",
                             "EIGENVALUES/EIGENVECTORS:",
                             "EIGENVECTOR ADDITIONAL SHIFT:.001",
                             "EIGENVALUES FOUND AND THEIR CORRESPONDING UNIT EIGENVECTORS:",
                             "SPECIAL CREATED MATRIX:",
                             "RIGHT-HAND SIDE OF SYSTEM SOLVED BY LU FACTORS:",
                             "SOLUTION:"}));
}

TEST_F(PrintCommands, APrinterThatFailsRaisesItsFault) {
  printer.fails = true;
  try {
    PrintSlot(context, kSlotA);
    ADD_FAILURE() << "no fault";
  } catch (const RuntimeFault& fault) {
    EXPECT_EQ(fault.Number(), Fault::kPrinterError);
  }
  EXPECT_THROW(PrintReport(context), RuntimeFault);
}

TEST_F(PrintCommands, ALongDocumentIsAnnouncedAndCanBeStopped) {
  Hold(kSlotA, Rows({{1}}));
  printer.pages = 20;
  PrintSlot(context, kSlotA);
  EXPECT_EQ(screen.status, "");
  EXPECT_TRUE(screen.progress.empty()) << "20 pages are few";
  printer.pages = 472;
  for (const int report : {1, 200, 472}) {
    screen.stopAt = report;
    EXPECT_THROW(PrintSlot(context, kSlotA), Stopped);
    EXPECT_EQ(screen.status, "Printing 472 pages. Stop ends it.");
    EXPECT_EQ(printer.documents, 1) << report;
  }
  screen.stopAt = 0;
  PrintReport(context);
  EXPECT_EQ(printer.documents, 2);
  EXPECT_EQ(screen.status, "472 pages were printed.");
}

}  // namespace
}  // namespace qmx
