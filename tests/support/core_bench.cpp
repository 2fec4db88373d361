#include "support/core_bench.h"

#include "base/number_text.h"
#include "commands/dispatcher.h"
#include "commands/grid_commands.h"
#include "commands/lifecycle.h"
#include "commands/parameters.h"

namespace qmx::test {

Workbench::Workbench() { SetStartState(context); }

void Workbench::Enter(int operand, const Matrix& values) {
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

void Workbench::TypeElements(int slot, const Matrix& values) {
  for (int i = 1; i <= values.Rows(); ++i) {
    for (int j = 1; j <= values.Cols(); ++j) {
      CommitCell(context, slot, i, j, FileNumber(values(i, j)));
    }
  }
}

void Workbench::Press(int task) { PressTask(context, task); }

void Workbench::Reset(int operand) {
  screen.answers.push_back(Answer::kYes);
  ResetOperand(context, operand);
}

}  // namespace qmx::test
