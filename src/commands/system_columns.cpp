// SPDX-License-Identifier: MIT
#include "commands/system_columns.h"

#include <algorithm>
#include <utility>

#include "base/number_text.h"
#include "commands/file_apply.h"
#include "workspace/reset.h"

namespace qmx {
namespace {

constexpr const char* kTooLarge =
    "A matrix of this size does not fit into the memory of this computer.";

std::string Count(int count, const char* what) {
  return CStr(count) + " " + what + (count == 1 ? "" : "s");
}

/// The columns of a table without one of them, then that one; zeros where it is column 0.
Matrix Augmented(Matrix table, int rightColumn) {
  if (rightColumn == table.Cols()) return table;
  const int coefficients = table.Cols() - (rightColumn > 0 ? 1 : 0);
  Matrix augmented(table.Rows(), coefficients + 1);
  for (int i = 1; i <= table.Rows(); ++i) {
    const double* from = table.Row(i);
    double* to = augmented.Row(i);
    const int before = rightColumn > 0 ? rightColumn - 1 : table.Cols();
    to = std::copy_n(from, before, to);
    if (rightColumn == 0) continue;
    to = std::copy(from + rightColumn, from + table.Cols(), to);
    *to = from[rightColumn - 1];
  }
  return augmented;
}

Matrix RightSides(const Matrix& table, int rightColumn) {
  Matrix sides(table.Rows(), 1);
  for (int i = 1; rightColumn > 0 && i <= table.Rows(); ++i) sides(i, 1) = table(i, rightColumn);
  return sides;
}

/// Why a table cannot become a System with its right-hand sides in this column.
std::string Problem(const Context& context, const Matrix& table, int rightColumn) {
  if (rightColumn > table.Cols()) {
    return "There is no column " + CStr(rightColumn) + " for the right-hand side: there " +
           (table.Cols() == 1 ? "is " : "are ") + Count(table.Cols(), "column") + ".";
  }
  if (TakesRightSideOnly(context.workspace)) {
    const int order = context.workspace.storedFactors.lRows;
    if (table.Rows() == order) return {};
    return "The stored factors are of order " + CStr(order) + ": they need as many right-hand " +
           "sides, but there " + (table.Rows() == 1 ? "is " : "are ") + CStr(table.Rows()) + ".";
  }
  const int unknowns = table.Cols() - (rightColumn > 0 ? 1 : 0);
  if (unknowns == 0) return "There are no coefficients beside the right-hand side.";
  if (unknowns > table.Rows()) return "Can't have more unknowns than equations";
  if (CanAllocate(table.Rows(), unknowns + 1, context.memory)) return {};
  return kTooLarge;
}

void Refuse(Context& context, const std::string& problem) {
  context.dialogs.ShowMessage({problem, Icon::kCritical});
}

/// The column of B that is the right-hand side; nothing where there is none.
std::optional<int> RightColumnOfB(Context& context, ForeignDialogs& dialogs) {
  const Matrix& b = context.workspace.B().array;
  if (b.Cols() == 1) return 1;
  std::optional<int> column = dialogs.AskRightSide(b.Cols());
  if (column && !b.Contains(1, *column)) column.reset();
  return column;
}

}  // namespace

bool TakesRightSideOnly(const Workspace& workspace) {
  return workspace.SystemMethod == kSystemByFactors && workspace.StoredFactorsValid;
}

std::string TakeSystem(Context& context, Matrix table, int rightColumn) {
  std::string problem = Problem(context, table, rightColumn);
  if (!problem.empty()) return problem;
  SystemSection section;
  if (TakesRightSideOnly(context.workspace)) {
    section.kind = kSystemByFactors;
    section.matrix.array = RightSides(table, rightColumn);
  } else {
    section.matrix.array = Augmented(std::move(table), rightColumn);
    const Matrix& augmented = section.matrix.array;
    const bool square = augmented.Cols() - 1 == augmented.Rows();
    const bool oneShot = context.workspace.SystemMethod != kSystemOverdetermined && square;
    section.kind = oneShot ? kSystemOneShot : kSystemOverdetermined;
  }
  section.matrix.rows = section.matrix.array.Rows();
  section.matrix.cols = section.matrix.array.Cols();
  Reset(context, kResultSystem);
  ApplySystem(context, std::move(section));
  context.windows.ShowWindow(kSlotSystem);
  context.windows.BringMainToFront();
  return {};
}

void IntoSystem(Context& context, ForeignDialogs& dialogs) {
  const Workspace& workspace = context.workspace;
  const bool sidesOnly = TakesRightSideOnly(workspace);
  const Matrix& a = workspace.At(kSlotA).array;
  const Matrix& b = workspace.At(kSlotB).array;
  if (!workspace.BCreated || (!workspace.ACreated && !sidesOnly)) {
    return Refuse(context, sidesOnly ? "Please create matrix B, whose column is the right-hand side"
                                     : "Please create matrices A and B");
  }
  if (!sidesOnly && a.Rows() != b.Rows()) {
    return Refuse(context, "A has " + Count(a.Rows(), "row") + " and B has " +
                               Count(b.Rows(), "row") + ": each equation needs a right-hand side.");
  }
  if (b.Size() == 0 || (a.Size() == 0 && !sidesOnly))
    return Refuse(context, "A matrix without elements gives no equations.");
  const std::optional<int> column = RightColumnOfB(context, dialogs);
  if (!column) return;
  Matrix table = RightSides(b, *column);
  if (!sidesOnly) {
    if (!CanAllocate(a.Rows(), a.Cols() + 1, context.memory)) return Refuse(context, kTooLarge);
    table = Augmented(a.Shared(), 0);
    for (int i = 1; i <= a.Rows(); ++i) table(i, a.Cols() + 1) = b(i, *column);
  }
  const int last = table.Cols();
  const std::string problem = TakeSystem(context, std::move(table), last);
  if (!problem.empty()) Refuse(context, problem);
}

}  // namespace qmx
