// SPDX-License-Identifier: MIT
// Commands in orders that nobody plans: whatever was done before, the main window must fit what the
// Workspace holds.

#include <random>

#include "base/number_text.h"
#include "commands/dispatcher.h"
#include "commands/file_commands.h"
#include "commands/grid_commands.h"
#include "commands/lifecycle.h"
#include "commands/parameters.h"
#include "commands/task_table.h"
#include "support/core_bench.h"

namespace qmx {
namespace {

using test::WindowState;

class AnyOrder : public test::Workbench, public testing::WithParamInterface<unsigned> {
 protected:
  void Step();
  void Check();

 private:
  int Draw(int least, int most) { return std::uniform_int_distribution(least, most)(random_); }
  Matrix DrawMatrix();
  void CreateOrReset(Slot operand);
  void StepOfSystem();
  void PressAnyTask();
  void SaveAndOpenAgain();

  bool IsCreated(Slot operand) const {
    return operand == kSlotA ? workspace.ACreated : workspace.BCreated;
  }
  void CheckOperand(Slot operand);
  void CheckSystem();
  bool IsPresent(Slot slot) const;
  void CheckResult(Slot slot);
  void CheckGrid(Slot slot);

  std::mt19937 random_{GetParam()};
};

Matrix AnyOrder::DrawMatrix() {
  const int rows = Draw(1, 4);
  Matrix matrix(rows, Draw(0, 2) > 0 ? rows : Draw(1, 4));
  for (int i = 1; i <= matrix.Rows(); ++i) {
    for (int j = 1; j <= matrix.Cols(); ++j) matrix(i, j) = Draw(-3, 3) / 2.0;
  }
  return matrix;
}

void AnyOrder::CreateOrReset(Slot operand) {
  if (!IsCreated(operand)) {
    operand == kSlotA ? EnterA(DrawMatrix()) : EnterB(DrawMatrix());
  } else if (Draw(0, 1) == 0) {
    Reset(operand);
  } else {
    ClearOperand(context, operand);
  }
}

void AnyOrder::StepOfSystem() {
  if (workspace.SystemPresent) return ResetSystemCommand(context);
  SelectSystemMethod(context, Draw(0, 2));
  if (screen.Enabled(cmdCreateSystem)) CreateSystem(context);
}

void AnyOrder::PressAnyTask() {
  const std::span<const TaskInfo> tasks = Tasks();
  const int task =
      tasks[static_cast<std::size_t>(Draw(0, static_cast<int>(tasks.size()) - 1))].index;
  // The eigenvalue of a 1 x 1 matrix ends the program.
  if (task == 14 && workspace.A().rows == 1) return;
  screen.Select(OptPivot(Draw(0, 1)));
  screen.Select(OptCreate(Draw(0, 2)));
  Press(task);
}

void AnyOrder::SaveAndOpenAgain() {
  screen.fileNames = {"p", "p"};
  SaveProjectAs(context);
  OpenProject(context);
}

void AnyOrder::Step() {
  const auto from = static_cast<Slot>(Draw(0, kSlotCount - 1));
  const auto into = static_cast<Slot>(Draw(kSlotA, kSlotB));
  switch (Draw(0, 9)) {
    case 0:
      return CreateOrReset(into);
    case 1:
      return StepOfSystem();
    case 2:
      if (screen.Enabled(cmdExchangeAandB)) ExchangeAandB(context);
      return;
    case 3:
      if (screen.Enabled(into == kSlotA ? cmdIntoA(from) : cmdIntoB(from)))
        CopyInto(context, into, from);
      return;
    case 4:
      if (screen.Enabled(cmdShow(from)) && screen.windows[from] != WindowState::kNone)
        ToggleWidth(context, from);
      return;
    case 5:
      return SaveAndOpenAgain();
    default:
      return PressAnyTask();
  }
}

void AnyOrder::CheckOperand(Slot operand) {
  const bool isA = operand == kSlotA;
  const bool created = IsCreated(operand);
  for (const Control& control :
       {cmdPrint(operand), cmdShow(operand), cmdSave(operand), isA ? cmdIntoB(0) : cmdIntoA(1),
        isA ? cmdClearA : cmdClearB, isA ? cmdResetA : cmdResetB})
    EXPECT_EQ(screen.Enabled(control), created) << control.ObjectName();
  for (const Control& control : {InfoOf(operand).rows, InfoOf(operand).cols,
                                 isA ? cmdCreateA : cmdCreateB, isA ? cmdRetrieveA : cmdRetrieveB})
    EXPECT_EQ(screen.Enabled(control), !created) << control.ObjectName();
  const SlotData& data = workspace.At(operand);
  EXPECT_EQ(screen.Text(InfoOf(operand).rows), created ? CStr(data.array.Rows()) : "2");
  EXPECT_EQ(screen.Text(InfoOf(operand).cols), created ? CStr(data.array.Cols()) : "2");
  EXPECT_TRUE(created || screen.windows[operand] != WindowState::kShown);
}

void AnyOrder::CheckSystem() {
  const bool present = workspace.SystemPresent;
  for (const Control& control : {cmdPrint(kSlotSystem), cmdShow(kSlotSystem), cmdSave(kSlotSystem),
                                 cmdClearSystem, cmdResetSystem, cmdSolve})
    EXPECT_EQ(screen.Enabled(control), present) << control.ObjectName();
  EXPECT_EQ(screen.Enabled(cmdSaveLU), workspace.StoredFactorsValid);
  EXPECT_EQ(screen.Enabled(cmdRetrieveLU), workspace.SystemMethod == 1);
}

bool AnyOrder::IsPresent(Slot slot) const {
  return slot == kSlotCreated ? workspace.CreatedPresent : screen.frames[slot];
}

void AnyOrder::CheckResult(Slot slot) {
  const bool present = IsPresent(slot);
  for (const Control& control : {cmdPrint(slot), cmdShow(slot), cmdSave(slot), cmdIntoA(slot)})
    EXPECT_EQ(screen.Enabled(control), present) << control.ObjectName();
  EXPECT_TRUE(present || screen.windows[slot] != WindowState::kShown) << slot;
}

/// For slots whose arrays change only together with their grids.
void AnyOrder::CheckGrid(Slot slot) {
  const SlotData& data = workspace.At(slot);
  if (!IsPresent(slot)) return;
  for (int i = 1; i <= data.array.Rows(); ++i) {
    for (int j = 1; j <= data.array.Cols(); ++j) {
      const double value = data.array(i, j);
      EXPECT_EQ(screen.grids[slot].Text(i, j), screen.wide[slot] ? CStr(value) : CStrSingle(value))
          << slot << ": " << i << "," << j;
    }
  }
}

void AnyOrder::Check() {
  CheckOperand(kSlotA);
  CheckOperand(kSlotB);
  EXPECT_EQ(screen.Enabled(cmdExchangeAandB), workspace.ACreated && workspace.BCreated);
  CheckSystem();
  for (const Slot slot : kAllSlots) {
    if (slot >= kSlotSum && slot <= kSlotExchanges) CheckResult(slot);
  }
  for (const Slot slot : {kSlotSum, kSlotDifference, kSlotProduct, kSlotInverse, kSlotAdjoint,
                          kSlotTranspose, kSlotCreated, kSlotPermutation})
    CheckGrid(slot);
}

TEST_P(AnyOrder, TheMainWindowFitsTheWorkspace) {
  for (int step = 0; step < 150 && !HasFailure(); ++step) {
    SCOPED_TRACE(step);
    Step();
    Check();
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, AnyOrder, testing::Range(1U, 21U));

}  // namespace
}  // namespace qmx
