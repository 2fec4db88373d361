// SPDX-License-Identifier: MIT
// Every task stopped at every place where it tells how far it is.

#include "commands/dispatcher.h"
#include "support/core_walk.h"
#include "workspace/task_numbers.h"

namespace qmx {
namespace {

class StopTest : public test::RunnerBench, public ::testing::WithParamInterface<int> {
 protected:
  static constexpr int kOrder = 40;

  StopTest() {
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
  void Run(int task) {
    if (task >= 0) return runner.Step("task", [task](Context& c) { PressTask(c, task); });
    runner.Step("Solve", PressSolve);
  }
  std::string All() const {
    std::string all = Saved() + Shown();
    for (const test::WindowState window : screen.windows)
      all += std::to_string(static_cast<int>(window));
    for (const std::string& line : screen.lines) all += line + "\n";
    return all + (screen.resultsShown ? "R" : "r");
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

}  // namespace
}  // namespace qmx
