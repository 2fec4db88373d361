// SPDX-License-Identifier: MIT
#include "commands/computed_news.h"

#include "commands/command_runner.h"
#include "commands/dispatcher.h"
#include "commands/file_commands.h"
#include "commands/lifecycle.h"
#include "support/core_bench.h"
#include "workspace/task_numbers.h"

namespace qmx {
namespace {

using test::Rows;

class ComputedNewsTest : public test::Workbench {
 protected:
  std::string NewsOf(int task) {
    commands_.Step("a task", [task](Context& c) { PressTask(c, task); });
    return ComputedNews(workspace);
  }

  CommandRunner commands_{context, [](Fault) {}};
};

TEST_F(ComputedNewsTest, TellsWhatATaskHasComputed) {
  EXPECT_EQ(ComputedNews(workspace), "");
  EnterA(Rows({{0, 2}, {4, 8}}));
  EXPECT_EQ(NewsOf(kTaskInverse), "Inverse of A computed, 2 by 2");
  EXPECT_EQ(NewsOf(kTaskInverse), "Inverse of A computed, 2 by 2") << "each time";
  EXPECT_EQ(NewsOf(kTaskDeterminant), "Determinant of A: -8");
  EXPECT_EQ(NewsOf(kTaskTrace), "Trace of A: 8");
  EXPECT_EQ(NewsOf(kTaskSymmetry), "Symmetric: No");
  EXPECT_EQ(NewsOf(kTaskLU),
            "L computed, 2 by 2; U computed, 2 by 2; Permutation computed, 2 by 2; Map of "
            "exchanges computed, 2 values");
  EXPECT_EQ(NewsOf(kTaskSpecialMatrix), "Special matrix computed, 2 by 2");
}

TEST_F(ComputedNewsTest, SaysNothingOfRefusalsAndOfWhatIsBroughtBack) {
  EXPECT_EQ(NewsOf(kTaskInverse), "") << "there is no A";
  EnterA(Rows({{1, 2}, {2, 4}}));
  EXPECT_EQ(NewsOf(kTaskInverse), "") << "it has none";
  EnterA(Rows({{2}}));
  EXPECT_EQ(NewsOf(kTaskInverse), "Inverse of A computed, 1 by 1");
  commands_.Undo();
  EXPECT_EQ(ComputedNews(workspace), "");
  commands_.Redo();
  EXPECT_EQ(ComputedNews(workspace), "");
  commands_.Step("Create", [](Context& c) { CreateOperand(c, kSlotB); });
  EXPECT_EQ(ComputedNews(workspace), "") << "it opens to be typed in";
}

TEST_F(ComputedNewsTest, AProjectHasComputedNothing) {
  EnterA(Rows({{2}}));
  NewsOf(kTaskInverse);
  screen.fileNames = {"a.qmx"};
  commands_.Do([](Context& c) { SaveProjectAs(c); });
  commands_.Step("Open", [](Context& c) { OpenNamedProject(c, "a.qmx"); });
  EXPECT_TRUE(workspace.InverseComputed);
  EXPECT_EQ(ComputedNews(workspace), "");
}

}  // namespace
}  // namespace qmx
