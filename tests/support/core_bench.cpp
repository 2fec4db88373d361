// SPDX-License-Identifier: MIT
#include "support/core_bench.h"

#include "base/fault.h"
#include "base/number_text.h"
#include "commands/dispatcher.h"
#include "commands/grid_commands.h"
#include "commands/lifecycle.h"
#include "commands/parameters.h"

namespace qmx::test {

std::string DashRule() {
  std::string rule;
  for (int i = 0; i < 80; ++i) rule += "—";
  return rule;
}

Workbench::Workbench() { SetStartState(context); }

void Workbench::Enter(Slot operand, const Matrix& values) {
  screen.Type(InfoOf(operand).rows, CStr(values.Rows()));
  screen.Type(InfoOf(operand).cols, CStr(values.Cols()));
  CreateOperand(context, operand);
  TypeElements(operand, values);
}

void Workbench::EnterSystem(const Matrix& augmented) {
  screen.Type(txtEquations, CStr(augmented.Rows()));
  screen.Type(txtUnknowns, CStr(augmented.Cols() - 1));
  CreateSystem(context);
  TypeElements(kSlotSystem, augmented);
}

void Workbench::TypeElements(Slot slot, const Matrix& values) {
  for (int i = 1; i <= values.Rows(); ++i) {
    for (int j = 1; j <= values.Cols(); ++j) {
      CommitCell(context, slot, i, j, FileNumber(values(i, j)));
    }
  }
}

void Workbench::Press(int task) { PressTask(context, task); }

int Workbench::FaultOf(int task) {
  try {
    Press(task);
  } catch (const RuntimeFault& fault) {
    return static_cast<int>(fault.Number());
  }
  return 0;
}

void Workbench::Reset(Slot operand) {
  screen.answers.push_back(Answer::kYes);
  ResetOperand(context, operand);
}

}  // namespace qmx::test
