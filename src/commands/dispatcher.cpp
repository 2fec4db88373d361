// SPDX-License-Identifier: MIT
#include "commands/dispatcher.h"

#include <optional>

#include "commands/task_table.h"
#include "commands/tasks.h"

namespace qmx {
namespace {

constexpr std::array<TaskInfo, 17> kTasks{{
    {kTaskSum, "A + B", "Add", Operands::kBoth, ShapeRule::kSameShape, RunSum},
    {kTaskDifference, "A - B", "Subtract", Operands::kBoth, ShapeRule::kSameShape, RunDifference},
    {kTaskProduct, "A * B", "Multiply", Operands::kBoth, ShapeRule::kMultipliable, RunProduct},
    {kTaskDeterminant, "Determinant(A)", "Determinant of A", Operands::kA, ShapeRule::kSquare,
     RunDeterminant},
    {kTaskTrace, "Trace(A)", "Trace of A", Operands::kA, ShapeRule::kSquare, RunTrace},
    {kTaskInverse, "Inverse(A)", "Inverse of A", Operands::kA, ShapeRule::kSquare, RunInverse},
    {kTaskAdjoint, "Adjoint(A)", "Adjoint of A", Operands::kA, ShapeRule::kSquare,
     RunAdjointByCofactors},
    {kTaskAdjointByInverse, "Adjoint(A) (by inverse)", "Adjoint of A by Inverse", Operands::kA,
     ShapeRule::kSquare, RunAdjointByInverse},
    {kTaskLU, "LU factors of A", "LU factors of A", Operands::kA, ShapeRule::kNone, RunLU},
    {kTaskQR, "QR factors of A", "QR factors of A", Operands::kA, ShapeRule::kNoMoreColsThanRows,
     RunQR},
    {kTaskDefiniteness, "Definiteness of A", "Test definiteness of A", Operands::kA,
     ShapeRule::kSquare, RunDefiniteness},
    {kTaskEigen, "Eigen(A)", "Eigenvalues and eigenvectors of A", Operands::kA, ShapeRule::kSquare,
     RunEigen},
    {kTaskTranspose, "Transpose(A)", "Transpose of A", Operands::kA, ShapeRule::kNone,
     RunTranspose},
    {kTaskScale, "Multiply A by scalar", "Multiply A by a scalar", Operands::kA, ShapeRule::kNone,
     RunScale},
    {kTaskShift, "Shift A by scalar", "Shift A by a scalar", Operands::kA, ShapeRule::kNone,
     RunShift},
    {kTaskSpecialMatrix, "Create special matrix", "", Operands::kNone, ShapeRule::kNone,
     RunSpecialMatrix},
    {kTaskSymmetry, "Symmetry of A", "Test symmetry of A", Operands::kA, ShapeRule::kSquare,
     RunSymmetry},
}};

consteval bool TasksAreInOrder() {
  for (std::size_t i = 1; i < kTasks.size(); ++i) {
    if (kTasks[i].index <= kTasks[i - 1].index) return false;
  }
  return true;
}
static_assert(TasksAreInOrder());

Message Refusal(const char* text) { return {text, Icon::kCritical}; }

std::optional<Message> MissingOperand(const Workspace& workspace, Operands operands) {
  const bool both = operands == Operands::kBoth;
  if (both && !workspace.ACreated && !workspace.BCreated)
    return Refusal("Please create matrices A and B");
  if (both && !workspace.BCreated) return Refusal("Please create matrix B");
  if (operands != Operands::kNone && !workspace.ACreated) return Refusal("Please create matrix A");
  return std::nullopt;
}

std::optional<Message> WrongShape(const Workspace& workspace, ShapeRule rule) {
  const SlotData& a = workspace.At(kSlotA);
  const SlotData& b = workspace.At(kSlotB);
  switch (rule) {
    case ShapeRule::kNone:
      break;
    case ShapeRule::kSameShape:
      if (a.rows == b.rows && a.cols == b.cols) break;
      return Refusal("Incorrect Dimensionality. Matrices cannot be added or subtracted.");
    case ShapeRule::kMultipliable:
      if (a.cols == b.rows) break;
      return Refusal("Incorrect Dimensionality. Matrices cannot be multiplied.");
    case ShapeRule::kSquare:
      if (a.rows == a.cols) break;
      return Refusal("Matrix A is not square.");
    case ShapeRule::kNoMoreColsThanRows:
      if (a.cols <= a.rows) break;
      // A plain box, without the icon of the others.
      return Message{"Number of columns exceeds number of rows."};
  }
  return std::nullopt;
}

}  // namespace

std::span<const TaskInfo> Tasks() { return kTasks; }

const TaskInfo* FindTask(int index) {
  for (const TaskInfo& task : kTasks) {
    if (task.index == index) return &task;
  }
  return nullptr;
}

void PressTask(Context& context, int index) {
  const TaskInfo* task = FindTask(index);
  if (task == nullptr) return;
  Workspace& workspace = context.workspace;
  workspace.TaskIndex = index;
  context.panel.SetEnabled(mnuPrint, true);
  context.windows.HideEntryBox(kSlotA);
  context.windows.HideEntryBox(kSlotB);
  std::optional<Message> refusal = MissingOperand(workspace, task->operands);
  if (!refusal) refusal = WrongShape(workspace, task->shape);
  if (refusal) {
    context.dialogs.ShowMessage(*refusal);
    return;
  }
  task->routine(context);
  context.windows.BringMainToFront();
}

void PressShowResults(Context& context) { context.log.ShowResults(); }

}  // namespace qmx
