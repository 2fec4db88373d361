// SPDX-License-Identifier: MIT
#include "commands/system_columns.h"

#include <gtest/gtest.h>

#include "commands/dispatcher.h"
#include "commands/file_bench.h"
#include "support/core_foreign.h"
#include "workspace/task_numbers.h"

namespace qmx {
namespace {

using test::Rows;

class SystemColumns : public test::FileBench {
 protected:
  test::ScriptedForeign dialogs;
};

TEST_F(SystemColumns, AAndBBecomeASystemThatCanBeSolved) {
  EnterA(Rows({{2, 1}, {1, 3}}));
  EnterB(Rows({{3}, {5}}));
  IntoSystem(context, dialogs);
  EXPECT_EQ(Array(kSlotSystem), Rows({{2, 1, 3}, {1, 3, 5}}));
  EXPECT_EQ(workspace.SystemMethod, kSystemOneShot);
  EXPECT_EQ(Text(txtUnknowns), "2");
  EXPECT_EQ(screen.windows[kSlotSystem], test::WindowState::kShown);
  EXPECT_EQ(dialogs.columnsAsked, 0);
  PressSolve(context);
  EXPECT_EQ(Array(kSlotSolution).Rows(), 2);
  EXPECT_EQ(Array(kSlotA), Rows({{2, 1}, {1, 3}}));
  EXPECT_TRUE(NoMessage());
}

TEST_F(SystemColumns, OneOfSeveralColumnsIsAskedFor) {
  EnterA(Rows({{2, 1}, {1, 3}}));
  EnterB(Rows({{3, 30}, {5, 50}}));
  const std::string before = Everything();
  IntoSystem(context, dialogs);
  EXPECT_EQ(dialogs.columnsAsked, 2);
  EXPECT_EQ(Everything(), before) << "cancelled";
  dialogs.column = 2;
  IntoSystem(context, dialogs);
  EXPECT_EQ(Array(kSlotSystem), Rows({{2, 1, 30}, {1, 3, 50}}));
}

TEST_F(SystemColumns, TheSelectedWayOfSolvingStaysWhereItFits) {
  EnterA(Rows({{2, 1}, {1, 3}}));
  EnterB(Rows({{3}, {5}}));
  SelectSystemMethod(context, kSystemOverdetermined);
  IntoSystem(context, dialogs);
  EXPECT_EQ(workspace.SystemMethod, kSystemOverdetermined);
  Reset(kSlotA);
  EnterA(Rows({{1}, {2}}));
  SelectSystemMethod(context, kSystemOneShot);
  IntoSystem(context, dialogs);
  EXPECT_EQ(workspace.SystemMethod, kSystemOverdetermined);
  EXPECT_EQ(Array(kSlotSystem), Rows({{1, 3}, {2, 5}}));
  EXPECT_EQ(Text(txtUnknowns), "1");
}

TEST_F(SystemColumns, StoredFactorsNeedBAlone) {
  EnterA(Rows({{2, 1}, {1, 3}}));
  Press(kTaskLU);
  Reset(kSlotA);
  SelectSystemMethod(context, kSystemByFactors);
  IntoSystem(context, dialogs);
  EXPECT_EQ(screen.LastMessage(), "Please create matrix B, whose column is the right-hand side");
  EnterB(Rows({{3}, {5}}));
  IntoSystem(context, dialogs);
  EXPECT_EQ(Array(kSlotSystem), Rows({{3}, {5}}));
  EXPECT_EQ(workspace.SystemMethod, kSystemByFactors);
  Reset(kSlotB);
  EnterB(Rows({{3}, {5}, {7}}));
  IntoSystem(context, dialogs);
  EXPECT_EQ(screen.LastMessage(),
            "The stored factors are of order 2: they need as many right-hand sides, but there are "
            "3.");
  EXPECT_EQ(Array(kSlotSystem), Rows({{3}, {5}}));
}

TEST_F(SystemColumns, WhatDoesNotFitIsRefused) {
  const auto refusal = [this] {
    const std::string before = Everything();
    IntoSystem(context, dialogs);
    EXPECT_EQ(Everything(), before);
    EXPECT_EQ(screen.messages.back().icon, Icon::kCritical);
    return screen.LastMessage();
  };
  EXPECT_EQ(refusal(), "Please create matrices A and B");
  EnterA(Rows({{2, 1, 1}, {1, 3, 1}}));
  EXPECT_EQ(refusal(), "Please create matrices A and B");
  EnterB(Rows({{3}}));
  EXPECT_EQ(refusal(), "A has 2 rows and B has 1 row: each equation needs a right-hand side.");
  Reset(kSlotB);
  EnterB(Rows({{3}, {4}}));
  EXPECT_EQ(refusal(), "Can't have more unknowns than equations");
  workspace.At(kSlotB) = {Matrix(2, 0), 2, 0};
  EXPECT_EQ(refusal(), "A matrix without elements gives no equations.");
  workspace.At(kSlotA) = {Matrix(2, 0), 2, 0};
  workspace.At(kSlotB) = {Rows({{3}, {4}}), 2, 1};
  EXPECT_EQ(refusal(), "A matrix without elements gives no equations.");
  workspace.At(kSlotA) = {Rows({{2, 1, 1}, {1, 3, 1}}), 2, 3};
  memory.available = 10;
  EXPECT_EQ(refusal(), "A matrix of this size does not fit into the memory of this computer.");
}

}  // namespace
}  // namespace qmx
