// SPDX-License-Identifier: MIT
// Every task stopped at every place where it tells how far it is.

#include "commands/dispatcher.h"
#include "commands/import_commands.h"
#include "support/core_foreign.h"
#include "support/core_walk.h"
#include "workspace/task_numbers.h"

namespace qmx {
namespace {

class StopTestBench : public test::RunnerBench {
 protected:
  static constexpr int kOrder = 40;

  StopTestBench() {
    Matrix a(kOrder, kOrder);
    for (int i = 1; i <= kOrder; ++i) {
      for (int j = 1; j <= kOrder; ++j) a(i, j) = 1.0 / (i + j) + (i == j ? 3 : 0);
    }
    EnterA(a);
    EnterB(a);
    EnterSystem(Matrix(kOrder, kOrder + 1));
    for (int i = 1; i <= kOrder; ++i) workspace.System().array(i, i) = i;
    screen.Type(txtMaxcy, "5");
    Press(kTaskEigen);
  }
  std::string All() const {
    std::string all = Saved() + Shown();
    for (const test::WindowState window : screen.windows)
      all += std::to_string(static_cast<int>(window));
    for (const std::string& line : screen.lines) all += line + "\n";
    return all + (screen.resultsShown ? "R" : "r");
  }
};

class StopTest : public StopTestBench, public ::testing::WithParamInterface<int> {
 protected:
  void Run(int task) {
    if (task >= 0) return runner.Step("task", [task](Context& c) { PressTask(c, task); });
    runner.Step("Solve", PressSolve);
  }
};

INSTANTIATE_TEST_SUITE_P(Tasks, StopTest,
                         ::testing::Values(-1, kTaskProduct, kTaskDeterminant, kTaskInverse,
                                           kTaskAdjoint, kTaskAdjointByInverse, kTaskLU, kTaskQR,
                                           kTaskDefiniteness, kTaskEigen));

TEST_P(StopTest, LeavesEverythingAsItWasBeforeThePress) {
  const std::string before = All();
  int stops = 0;
  for (int at = 1;; at += 1 + at / 8) {
    screen.stopAt = at;
    Run(GetParam());
    if (screen.stopAt > 0) break;
    ++stops;
    ASSERT_EQ(All(), before) << "stopped at report " << at;
    ASSERT_TRUE(screen.status.ends_with(" was stopped. Everything is as it was before."));
    ASSERT_EQ(runner.Steps().UndoName(), "") << "a stop is no step";
  }
  EXPECT_GE(stops, 1);
  EXPECT_NE(All(), before) << "the last run was not stopped";
  EXPECT_TRUE(faults.empty());
}

/// An import into a program that holds everything already, stopped wherever it tells how far it is.
class StoppedImport : public StopTestBench, public ::testing::WithParamInterface<Slot> {};

INSTANTIATE_TEST_SUITE_P(Targets, StoppedImport,
                         ::testing::Values(kSlotA, kSlotB, kSlotCreated, kSlotSystem));

TEST_P(StoppedImport, LeavesEverythingAsItWasBefore) {
  files.files["f"] = "1;2,5\n3;4\n5;6\n";
  const std::string before = All();
  int stops = 0;
  for (int at = 1;; ++at) {
    screen.stopAt = at;
    screen.fileNames = {"f"};
    test::ScriptedForeign dialogs;
    dialogs.Accept();
    runner.Step("Import", [&](Context& c) { ImportFile(c, dialogs, GetParam()); });
    if (screen.stopAt > 0) break;
    ++stops;
    ASSERT_EQ(All(), before) << "stopped at report " << at;
    ASSERT_EQ(workspace.currentFileName, "");
    ASSERT_EQ(screen.status, "Import was stopped. Everything is as it was before.");
  }
  EXPECT_EQ(stops, 3) << "read, recognised, taken apart";
  EXPECT_NE(All(), before) << "the last run was not stopped";
}

}  // namespace
}  // namespace qmx
