// SPDX-License-Identifier: MIT
#include "base/fault.h"
#include "commands/dispatcher.h"
#include "commands/lifecycle.h"
#include "commands/parameters.h"
#include "support/core_bench.h"

namespace qmx {
namespace {

using test::Rows;
using test::WindowState;
using SolvingTest = test::Workbench;

const std::vector<std::string> kDependent = {
    "ERROR:", "AT LEAST ONE EQUATION IS LINEARLY DEPENDENT",
    "SO THE SYSTEM HAS INFINITELY MANY SOLUTIONS."};

/// The lines of the report without its closing line, which must be 80 em dashes.
std::vector<std::string> ReportBody(const test::RecordingScreen& screen) {
  std::vector<std::string> lines = screen.lines;
  EXPECT_FALSE(lines.empty());
  if (lines.empty()) return lines;
  EXPECT_EQ(lines.back(), test::DashRule());
  lines.pop_back();
  return lines;
}

TEST_F(SolvingTest, AOneShotSystemIsSolvedAndShown) {
  EnterSystem(Rows({{2, 1, 5}, {1, 3, 10}}));
  PressSolve(context);
  EXPECT_EQ(Array(kSlotSolution), Rows({{1}, {3}}));
  EXPECT_TRUE(workspace.SolutionComputed);
  EXPECT_EQ(workspace.At(kSlotSolution).rows, 2);
  EXPECT_EQ(workspace.At(kSlotSolution).cols, 1);
  EXPECT_EQ(screen.Text({"lblRowsSolution"}), "2");
  EXPECT_EQ(screen.windows[kSlotSolution], WindowState::kShown);
  EXPECT_EQ(screen.grids[kSlotSolution].Text(1, 0), "  x(2) = ");
  EXPECT_EQ(screen.grids[kSlotSolution].Text(1, 1), "3");
  EXPECT_TRUE(screen.lines.empty());
  EXPECT_EQ(Array(kSlotSystem), Rows({{2, 1, 5}, {1, 3, 10}}));
}

TEST_F(SolvingTest, OneEquationInOneUnknown) {
  EnterSystem(Rows({{4, 10}}));
  PressSolve(context);
  EXPECT_EQ(Array(kSlotSolution), Rows({{2.5}}));
}

TEST_F(SolvingTest, IdenticalEquationsAreDependent) {
  EnterSystem(Rows({{1, 2, 3}, {1, 2, 3}}));
  PressSolve(context);
  EXPECT_EQ(ReportBody(screen), kDependent);
  EXPECT_TRUE(screen.resultsShown);
  EXPECT_TRUE(screen.Enabled(cmdShowResults));
  EXPECT_FALSE(workspace.SolutionComputed);
  EXPECT_FALSE(screen.frames[kSlotSolution]);
}

TEST_F(SolvingTest, IdenticalEquationsWithOtherRightHandSidesAreInconsistent) {
  EnterSystem(Rows({{1, 2, 3}, {1, 2, 4}}));
  PressSolve(context);
  EXPECT_EQ(ReportBody(screen),
            (std::vector<std::string>{"ERROR:", "THE SYSTEM IS INCONSISTENT."}));
}

TEST_F(SolvingTest, AZeroFirstColumnIsFoundByBackSubstitution) {
  EnterSystem(Rows({{0, 1, 2}, {0, 1, 2}}));
  PressSolve(context);
  EXPECT_EQ(ReportBody(screen), kDependent);
  screen.lines.clear();
  workspace.System().array = Rows({{0, 1, 2}, {0, 1, 3}});
  PressSolve(context);
  EXPECT_EQ(ReportBody(screen),
            (std::vector<std::string>{"ERROR:", "THE SYSTEM IS INCONSISTENT."}));
}

TEST_F(SolvingTest, AFailedRunLeavesTheUnknownsSolvedSoFar) {
  EnterSystem(Rows({{0, 2, 6}, {0, 0, 0}}));
  workspace.System().array = Rows({{0, 0, 2}, {0, 2, 6}});
  PressSolve(context);
  EXPECT_EQ(Array(kSlotSolution), Rows({{0}, {3}}));
}

TEST_F(SolvingTest, StoredFactorsSolveOneRightHandSideAfterTheOther) {
  EnterA(Rows({{0, 2}, {4, 0}}));
  Press(8);
  SelectSystemMethod(context, 1);
  CreateSystem(context);
  for (const double b : {1.0, 2.0, 3.0}) {
    workspace.System().array = Rows({{2 * b}, {4 * b}});
    PressSolve(context);
    EXPECT_EQ(Array(kSlotSolution), Rows({{b}, {b}}));
  }
  EXPECT_TRUE(screen.lines.empty());
}

TEST_F(SolvingTest, AZeroOnTheDiagonalOfUIsReported) {
  workspace.storedFactors.L = Rows({{1, 0}, {0, 1}});
  workspace.storedFactors.U = Rows({{1, 1}, {0, 0}});
  workspace.storedFactors.exchanges = Rows({{1}, {2}});
  workspace.storedFactors.lRows = 2;
  workspace.StoredFactorsValid = true;
  SelectSystemMethod(context, 1);
  CreateSystem(context);
  PressSolve(context);
  EXPECT_EQ(ReportBody(screen), kDependent);
  screen.lines.clear();
  workspace.System().array = Rows({{1}, {5}});
  PressSolve(context);
  EXPECT_EQ(ReportBody(screen),
            (std::vector<std::string>{"ERROR:", "THE SYSTEM IS INCONSISTENT."}));
}

TEST_F(SolvingTest, LeastSquaresOfAnInconsistentSystem) {
  SelectSystemMethod(context, 2);
  EnterSystem(Rows({{1, 0, 1}, {0, 1, 1}, {1, 1, 3}}));
  PressSolve(context);
  ASSERT_EQ(Array(kSlotSolution).Rows(), 2);
  EXPECT_NEAR(Array(kSlotSolution)(1, 1), 4.0 / 3, 1e-15);
  EXPECT_NEAR(Array(kSlotSolution)(2, 1), 4.0 / 3, 1e-15);
  EXPECT_EQ(screen.Text({"lblRowsSolution"}), "2");
  EXPECT_EQ(screen.grids[kSlotSolution].rows, 2);
}

TEST_F(SolvingTest, IdenticalColumnsGiveDependentNormalEquations) {
  SelectSystemMethod(context, 2);
  EnterSystem(Rows({{1, 1, 1}, {2, 2, 2}, {3, 3, 3}}));
  PressSolve(context);
  EXPECT_EQ(ReportBody(screen),
            (std::vector<std::string>{"ERROR:", "YIELDS LINEARLY DEPENDENT SYSTEM."}));
}

TEST_F(SolvingTest, ABadNumberOfUnknownsIsRefused) {
  EnterSystem(Rows({{2, 1, 5}, {1, 3, 10}}));
  screen.Type(txtUnknowns, "");
  PressSolve(context);
  EXPECT_EQ(screen.LastMessage(),
            "Number of unknowns: \"\"\nThis must be a whole number of at least 1.");
  EXPECT_FALSE(workspace.SolutionComputed);
}

TEST_F(SolvingTest, SolvingByFactorsWithoutFactorsIsASubscriptFault) {
  EnterSystem(Rows({{2, 1, 5}, {1, 3, 10}}));
  SelectSystemMethod(context, 1);
  EXPECT_THROW(PressSolve(context), RuntimeFault);
}

}  // namespace
}  // namespace qmx
