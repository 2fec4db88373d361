// SPDX-License-Identifier: MIT
#include "commands/dispatcher.h"

#include <set>

#include "commands/task_table.h"
#include "support/core_bench.h"

namespace qmx {
namespace {

using test::Rows;
using DispatcherTest = test::Workbench;

void ExpectOnlyMessage(const test::RecordingScreen& screen, const std::string& text, Icon icon) {
  ASSERT_EQ(screen.messages.size(), 1U);
  EXPECT_EQ(screen.messages[0].text, text);
  EXPECT_EQ(screen.messages[0].icon, icon);
  EXPECT_EQ(screen.messages[0].buttons, Buttons::kOk);
  EXPECT_EQ(screen.messages[0].title, "Orvane");
}

TEST_F(DispatcherTest, TheTableHoldsEveryButton) {
  struct Expected {
    int index;
    std::string_view caption;
    std::string_view toolTip;
  };
  const Expected expected[] = {
      {0, "A + B", "Add"},
      {1, "A - B", "Subtract"},
      {2, "A * B", "Multiply"},
      {3, "Determinant(A)", "Determinant of A"},
      {4, "Trace(A)", "Trace of A"},
      {5, "Inverse(A)", "Inverse of A"},
      {6, "Adjoint(A)", "Adjoint of A"},
      {7, "Adjoint(A) (by inverse)", "Adjoint of A by Inverse"},
      {8, "LU factors of A", "LU factors of A"},
      {9, "QR factors of A", "QR factors of A"},
      {10, "Definiteness of A", "Test definiteness of A"},
      {14, "Eigen(A)", "Eigenvalues and eigenvectors of A"},
      {15, "Transpose(A)", "Transpose of A"},
      {16, "Multiply A by scalar", "Multiply A by a scalar"},
      {17, "Shift A by scalar", "Shift A by a scalar"},
      {18, "Create special matrix", ""},
      {19, "Symmetry of A", "Test symmetry of A"},
  };
  ASSERT_EQ(Tasks().size(), std::size(expected));
  for (std::size_t i = 0; i < std::size(expected); ++i) {
    EXPECT_EQ(Tasks()[i].index, expected[i].index);
    EXPECT_EQ(Tasks()[i].caption, expected[i].caption);
    EXPECT_EQ(Tasks()[i].toolTip, expected[i].toolTip);
  }
}

TEST_F(DispatcherTest, SumWithoutMatricesAsksForBoth) {
  Press(0);
  ExpectOnlyMessage(screen, "Please create matrices A and B", Icon::kCritical);
}

TEST_F(DispatcherTest, SumWithOnlyAAsksForB) {
  EnterA(Rows({{1}}));
  Press(1);
  ExpectOnlyMessage(screen, "Please create matrix B", Icon::kCritical);
}

TEST_F(DispatcherTest, SumWithOnlyBAsksForA) {
  EnterB(Rows({{1}}));
  Press(2);
  ExpectOnlyMessage(screen, "Please create matrix A", Icon::kCritical);
}

TEST_F(DispatcherTest, EveryTaskButTheGeneratorNeedsA) {
  EnterB(Rows({{1}}));
  for (const TaskInfo& task : Tasks()) {
    if (task.index == 18) continue;
    screen.messages.clear();
    Press(task.index);
    ExpectOnlyMessage(screen, "Please create matrix A", Icon::kCritical);
  }
}

TEST_F(DispatcherTest, TheGeneratorRunsWithoutAnyMatrix) {
  Press(18);
  EXPECT_TRUE(NoMessage());
  EXPECT_EQ(Array(kSlotCreated), Rows({{0, 0}, {0, 0}}));
}

TEST_F(DispatcherTest, QRNeedsNoMoreColumnsThanRowsAndSaysSoPlainly) {
  EnterA(Rows({{1, 2, 3}, {0, 1, 4}, {5, 6, 0}}));
  Press(9);
  EXPECT_TRUE(NoMessage());
  EnterA(Rows({{1, 2}, {3, 4}, {5, 6}, {7, 9}}));
  Press(9);
  EXPECT_TRUE(NoMessage());
  EnterA(Matrix(2, 4));
  Press(9);
  ExpectOnlyMessage(screen, "Number of columns exceeds number of rows.", Icon::kNone);
}

TEST_F(DispatcherTest, LUAcceptsARectangularMatrix) {
  EnterA(Rows({{1, 2, 3}, {4, 5, 6}}));
  Press(8);
  EXPECT_TRUE(NoMessage());
  EXPECT_EQ(Array(kSlotU).Cols(), 3);
}

TEST_F(DispatcherTest, ProductNeedsMatchingInnerDimensions) {
  EnterA(Matrix(2, 3));
  EnterB(Matrix(3, 4));
  Press(2);
  EXPECT_TRUE(NoMessage());
  EXPECT_EQ(Array(kSlotProduct).Cols(), 4);
  EnterB(Matrix(2, 3));
  Press(2);
  ExpectOnlyMessage(screen, "Incorrect Dimensionality. Matrices cannot be multiplied.",
                    Icon::kCritical);
}

TEST_F(DispatcherTest, SumAndDifferenceNeedTheSameShape) {
  EnterA(Matrix(2, 3));
  EnterB(Matrix(3, 2));
  for (const int task : {0, 1}) {
    screen.messages.clear();
    Press(task);
    ExpectOnlyMessage(screen, "Incorrect Dimensionality. Matrices cannot be added or subtracted.",
                      Icon::kCritical);
  }
}

TEST_F(DispatcherTest, TasksOfSquareMatricesRefuseARectangularOne) {
  EnterA(Matrix(2, 3));
  for (const int task : {3, 4, 5, 6, 7, 10, 14, 19}) {
    screen.messages.clear();
    Press(task);
    ExpectOnlyMessage(screen, "Matrix A is not square.", Icon::kCritical);
  }
}

TEST_F(DispatcherTest, TasksWithoutShapeConditionRunOnARectangularMatrix) {
  EnterA(Matrix(2, 3));
  for (const int task : {15, 16, 17}) Press(task);
  EXPECT_TRUE(NoMessage());
}

TEST_F(DispatcherTest, AOneByOneMatrixIsSquare) {
  EnterA(Rows({{5}}));
  for (const int task : {3, 4, 5, 6, 7, 10, 19}) Press(task);
  EXPECT_TRUE(NoMessage());
}

TEST_F(DispatcherTest, ARefusalLeavesTheIndexPrintMenuAndHiddenEntryBoxes) {
  EXPECT_FALSE(screen.Enabled(mnuPrint));
  screen.entryBoxes[kSlotA] = screen.entryBoxes[kSlotB] = true;
  Press(5);
  EXPECT_EQ(workspace.TaskIndex, 5);
  EXPECT_TRUE(screen.Enabled(mnuPrint));
  EXPECT_FALSE(screen.entryBoxes[kSlotA]);
  EXPECT_FALSE(screen.entryBoxes[kSlotB]);
  EXPECT_EQ(screen.timesBroughtToFront, 0);
}

TEST_F(DispatcherTest, AnIndexWithoutATaskDoesNothing) {
  for (const int index : {-1, 11, 12, 13, 20}) Press(index);
  EXPECT_EQ(workspace.TaskIndex, 0);
  EXPECT_FALSE(screen.Enabled(mnuPrint));
  EXPECT_TRUE(NoMessage());
}

TEST_F(DispatcherTest, ATaskEndsWithTheMainWindowInFront) {
  Press(18);
  EXPECT_EQ(screen.timesBroughtToFront, 1);
}

TEST_F(DispatcherTest, ShowResultsOpensTheList) {
  PressShowResults(context);
  EXPECT_TRUE(screen.resultsShown);
}

}  // namespace
}  // namespace qmx
