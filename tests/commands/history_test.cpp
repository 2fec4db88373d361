// SPDX-License-Identifier: MIT
#include "commands/history.h"

#include <gtest/gtest.h>

#include "commands/dispatcher.h"
#include "commands/file_commands.h"
#include "commands/grid_commands.h"
#include "commands/lifecycle.h"
#include "commands/parameters.h"
#include "files/project_file.h"
#include "support/core_walk.h"
#include "workspace/computation.h"
#include "workspace/task_numbers.h"

namespace qmx {
namespace {

using test::Rows;

class HistoryTest : public test::RunnerBench {
 protected:
  void Clear() {
    runner.Step("Clear of matrix A", [](Context& c) { ClearOperand(c, kSlotA); });
  }
};

TEST_F(HistoryTest, TakesBackAClearAndDoesItAgain) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  Clear();
  EXPECT_EQ(Array(kSlotA), Matrix(2, 2));
  EXPECT_EQ(runner.Steps().UndoName(), "Clear of matrix A");
  EXPECT_EQ(runner.Steps().RedoName(), "");
  runner.Undo();
  EXPECT_EQ(Array(kSlotA), Rows({{1, 2}, {3, 4}}));
  EXPECT_EQ(screen.grids[kSlotA].Text(2, 1), "3");
  EXPECT_EQ(runner.Steps().UndoName(), "");
  EXPECT_EQ(runner.Steps().RedoName(), "Clear of matrix A");
  runner.Redo();
  EXPECT_EQ(Array(kSlotA), Matrix(2, 2));
  EXPECT_EQ(screen.grids[kSlotA].Text(2, 1), "0");
}

TEST_F(HistoryTest, TheTextsOfOneCellAreOneStep) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  for (const char* text : {"5", "57", "57."}) runner.WriteCell(kSlotA, 1, 2, text);
  EXPECT_EQ(Array(kSlotA)(1, 2), 57);
  EXPECT_EQ(runner.Steps().UndoName(), "A(1,2)");
  runner.EndCell();
  runner.WriteCell(kSlotA, 1, 2, "8");
  runner.Undo();
  EXPECT_EQ(Array(kSlotA)(1, 2), 57);
  EXPECT_EQ(screen.grids[kSlotA].Text(1, 2), "57.");
  runner.Undo();
  EXPECT_EQ(Array(kSlotA)(1, 2), 2);
  EXPECT_EQ(screen.grids[kSlotA].Text(1, 2), "2");
  runner.Redo();
  runner.Redo();
  EXPECT_EQ(Array(kSlotA)(1, 2), 8);
}

TEST_F(HistoryTest, ATypedCellCopiesNoMatrixOfASteppedState) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  runner.Step("task", [](Context& c) { PressTask(c, kTaskTranspose); });
  runner.WriteCell(kSlotA, 1, 1, "9");
  const double* elements = Array(kSlotA).Data();
  runner.EndCell();
  runner.WriteCell(kSlotA, 1, 2, "9");
  EXPECT_EQ(Array(kSlotA).Data(), elements);
  runner.Undo();
  runner.Undo();
  runner.Undo();
  EXPECT_EQ(Array(kSlotA), Rows({{1, 2}, {3, 4}}));
  EXPECT_FALSE(workspace.TransposeComputed);
}

TEST_F(HistoryTest, APasteIsOneStep) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  runner.Paste(kSlotA, 1, 1, "5\t6\n7\t8\n");
  EXPECT_EQ(runner.Steps().UndoName(), "paste into Matrix A");
  runner.Undo();
  EXPECT_EQ(Array(kSlotA), Rows({{1, 2}, {3, 4}}));
  EXPECT_EQ(screen.grids[kSlotA].Text(2, 2), "4");
  runner.Redo();
  EXPECT_EQ(Array(kSlotA), Rows({{5, 6}, {7, 8}}));
  EXPECT_EQ(screen.grids[kSlotA].Text(2, 2), "8");
}

TEST_F(HistoryTest, WhatIsRefusedIsNoStep) {
  runner.Step("A + B", [](Context& c) { PressTask(c, kTaskSum); });
  EXPECT_EQ(screen.LastMessage(), "Please create matrices A and B");
  EXPECT_EQ(runner.Steps().UndoName(), "");
}

TEST_F(HistoryTest, ANewStepForgetsWhatWasTakenBack) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  Clear();
  runner.Undo();
  runner.WriteCell(kSlotA, 1, 1, "5");
  EXPECT_EQ(runner.Steps().RedoName(), "");
}

TEST_F(HistoryTest, TheResultsListIsARecordAndStays) {
  EnterA(Rows({{2, 1}, {1, 2}}));
  runner.Step("Definiteness", [](Context& c) { PressTask(c, kTaskDefiniteness); });
  const auto lines = screen.lines;
  ASSERT_FALSE(lines.empty());
  runner.Undo();
  EXPECT_EQ(screen.lines, lines);
  EXPECT_FALSE(workspace.DefinitenessComputed);
  EXPECT_EQ(screen.Text(lblDefiniteness), "");
}

TEST_F(HistoryTest, AWindowThatAStepOpenedGoesWithIt) {
  EnterA(Rows({{2, 1}, {1, 2}}));
  runner.Step("Inverse(A)", [](Context& c) { PressTask(c, kTaskInverse); });
  EXPECT_EQ(screen.windows[kSlotInverse], test::WindowState::kShown);
  runner.Undo();
  EXPECT_EQ(screen.windows[kSlotInverse], test::WindowState::kNone);
  EXPECT_FALSE(screen.frames[kSlotInverse]);
  runner.Redo();
  EXPECT_EQ(screen.windows[kSlotInverse], test::WindowState::kShown);
  EXPECT_TRUE(screen.frames[kSlotInverse]);
}

TEST_F(HistoryTest, KeepsWithinItsMemoryAndDropsTheOldest) {
  EnterA(Rows({{1}}));
  History history(100 * 100 * 8 * 3 + 20000);
  for (int i = 0; i < 10; ++i) {
    State before = CaptureState(context);
    workspace.A() = SlotData(Matrix(100, 100), 100, 100);
    history.Push(context, "step " + std::to_string(i), std::move(before));
    EXPECT_LE(history.Bytes(), std::size_t{100 * 100 * 8 * 3 + 20000});
  }
  int steps = 0;
  for (; !history.UndoName().empty(); ++steps) history.Undo(context);
  EXPECT_EQ(steps, 3);
}

TEST_F(HistoryTest, CountsWhatComputationsHoldToo) {
  constexpr std::size_t kBytes = std::size_t{100} * 100 * 8;
  EnterA(Matrix(100, 100));
  History history(100 * kBytes);
  for (int i = 0; i < 5; ++i) {
    State before = CaptureState(context);
    Matrix scaled(100, 100);
    std::swap(workspace.A().array, scaled);
    KeepChangeOfA(workspace, Computation::Change::kScaled, std::move(scaled), 2);
    workspace.A().array.MakeOwn();  // As an edited cell does.
    history.Push(context, "step", std::move(before));
  }
  // Of each step but the last: A as it was edited, and as it was computed.
  EXPECT_GE(history.Bytes(), 8 * kBytes);
  EXPECT_LE(history.Bytes(), 9 * kBytes);
}

class HistoryWalk : public test::RunnerBench, public ::testing::WithParamInterface<int> {
 protected:
  /// Files to be opened on the way.
  void WriteFiles() {
    EnterA(Rows({{2, 1}, {1, 3}}));
    for (const int task : {3, 5, 8, 14, 18}) Press(task);
    screen.fileNames = {"p", "matrix", "factors"};
    SaveProjectAs(context);
    SaveSlot(context, kSlotA);
    SaveLU(context);
  }
};

INSTANTIATE_TEST_SUITE_P(Seeds, HistoryWalk, ::testing::Range(0, 12));

TEST_P(HistoryWalk, StatesComeBackAsTheyWere) {
  std::mt19937 any(GetParam());
  struct Record {
    std::string saved;
    std::string shown;
  };
  WriteFiles();
  std::vector<Record> past;
  std::vector<Record> future;
  int compared = 0;
  for (int i = 0; i < 600; ++i) {
    const Record now{Saved(), Shown()};
    if (any() % 3 != 0) {
      const std::size_t count = runner.Steps().UndoCount();
      RandomStep(any);
      if (runner.Steps().UndoCount() == count) continue;
      past.push_back(now);
      future.clear();
    } else if (any() % 2 == 0 && !past.empty()) {
      runner.Undo();
      ASSERT_EQ(Saved(), past.back().saved) << "step " << i;
      ASSERT_EQ(Shown(), past.back().shown) << "step " << i;
      past.pop_back();
      future.push_back(now);
      ++compared;
    } else if (!future.empty()) {
      runner.Redo();
      ASSERT_EQ(Saved(), future.back().saved) << "step " << i;
      ASSERT_EQ(Shown(), future.back().shown) << "step " << i;
      future.pop_back();
      past.push_back(now);
      ++compared;
    }
  }
  EXPECT_GE(compared, 60);
}

TEST_P(HistoryWalk, WhatCountsAsSavedHasTheSavedBytes) {
  std::mt19937 any(GetParam());
  WriteFiles();
  std::string saved;
  int compared = 0;
  for (int i = 0; i < 1000; ++i) {
    const auto bytes = [&] { return ProjectFile(workspace, ReadEigenTexts(screen)); };
    switch (any() % 8) {
      case 0:
        runner.Do([this](Context&) { runner.MarkSaved(); });
        saved = bytes();
        break;
      case 1:
      case 2:
        runner.Undo();
        break;
      case 3:
        runner.Redo();
        break;
      default:
        RandomStep(any);
    }
    if (saved.empty() || runner.IsChanged()) continue;
    ASSERT_EQ(bytes(), saved) << "step " << i;
    ++compared;
  }
  EXPECT_GE(compared, 100);
}

}  // namespace
}  // namespace qmx
