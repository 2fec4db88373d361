// SPDX-License-Identifier: MIT
#include "commands/parameters.h"
#include "files/project_file.h"
#include "support/core_bench.h"

namespace qmx {
namespace {

using test::Rows;
using SpecialMatrixTest = test::Workbench;

TEST_F(SpecialMatrixTest, SpecialMatricesAreFilledAsChosen) {
  screen.Type(txtRowsCreated, "2");
  screen.Type(txtColsCreated, "3");
  Press(18);
  EXPECT_EQ(Array(kSlotCreated), Matrix(2, 3));
  EXPECT_EQ(screen.grids[kSlotCreated].Text(2, 3), "0");
  screen.Select(OptCreate(1));
  Press(18);
  EXPECT_EQ(Array(kSlotCreated), Rows({{1, 1, 1}, {1, 1, 1}}));
  screen.Select(OptCreate(2));
  Press(18);
  EXPECT_EQ(Array(kSlotCreated), Rows({{1, 0, 0}, {0, 1, 0}}));
  EXPECT_TRUE(workspace.CreatedPresent);
  EXPECT_TRUE(screen.Enabled(cmdIntoA(15)));
}

TEST_F(SpecialMatrixTest, AnIdentityWithTooManyRowsIsToldAndFilledAsFarAsItGoes) {
  screen.Type(txtRowsCreated, "3");
  screen.Type(txtColsCreated, "2");
  screen.Select(OptCreate(2));
  Press(18);
  ASSERT_EQ(screen.messages.size(), 1U);
  EXPECT_EQ(screen.messages[0].icon, Icon::kCritical);
  EXPECT_EQ(Array(kSlotCreated), Rows({{1, 0}, {0, 1}, {0, 0}}));
  EXPECT_EQ(screen.grids[kSlotCreated].Text(1, 1), "1");
}

TEST_F(SpecialMatrixTest, ARandomMatrixStaysWithinItsBounds) {
  screen.Select(OptCreate(3));
  random.sequence = {0.0F, 0.5F, 0.75F, 0.25F};
  Press(18);
  EXPECT_EQ(Array(kSlotCreated), Rows({{-10, 0}, {5, -5}}));
  EXPECT_EQ(random.seeds.size(), 1U);
  screen.Type(txtRandHigh, "-10");
  Press(18);
  EXPECT_EQ(Array(kSlotCreated), Rows({{-10, -10}, {-10, -10}}));
  EXPECT_EQ(random.seeds.size(), 2U);
}

TEST_F(SpecialMatrixTest, ASymmetricRandomMatrixOfWholeNumbers) {
  screen.Select(OptCreate(3));
  screen.Check(chkSymmetric, true);
  screen.Check(chkIntegers, true);
  screen.Type(txtRowsCreated, "3");
  screen.Type(txtColsCreated, "3");
  random.sequence = {0.0F, 0.515F, 0.58F, 0.26F, 0.99F, 0.1F};
  Press(18);
  EXPECT_EQ(Array(kSlotCreated), Rows({{-10, 0, 2}, {0, -5, 10}, {2, 10, -8}}));
}

TEST_F(SpecialMatrixTest, ASymmetricRandomMatrixWithTooManyColumnsIsTold) {
  screen.Select(OptCreate(3));
  screen.Check(chkSymmetric, true);
  screen.Type(txtColsCreated, "3");
  Press(18);
  ASSERT_EQ(screen.messages.size(), 1U);
  EXPECT_EQ(screen.messages[0].icon, Icon::kCritical);
}

TEST_F(SpecialMatrixTest, AFaultLeavesTheMatrixOfBefore) {
  screen.Select(OptCreate(3));
  screen.Type(txtRandLow, "-1.7e308");
  screen.Type(txtRandHigh, "1.7e308");
  EXPECT_EQ(FaultOf(18), 6);
  EXPECT_FALSE(workspace.CreatedPresent) << "a project would hold a matrix of zeros";
  screen.Select(OptCreate(1));
  Press(18);
  const std::string before = ProjectFile(workspace, ReadEigenTexts(screen));
  screen.Select(OptCreate(3));
  screen.Type(txtColsCreated, "3");
  EXPECT_EQ(FaultOf(18), 6);
  EXPECT_EQ(Array(kSlotCreated), Rows({{1, 1}, {1, 1}}));
  EXPECT_EQ(ProjectFile(workspace, ReadEigenTexts(screen)), before);
}

}  // namespace
}  // namespace qmx
