// SPDX-License-Identifier: MIT
#include "support/core_walk.h"

#include <functional>

#include "base/number_text.h"
#include "commands/dispatcher.h"
#include "commands/file_commands.h"
#include "commands/grid_commands.h"
#include "commands/lifecycle.h"
#include "commands/parameters.h"
#include "files/lu_file.h"
#include "files/project_file.h"

namespace qmx::test {

std::string RunnerBench::Saved() const {
  std::string text = ProjectFile(workspace, ReadEigenTexts(screen));
  text += LUFile(workspace.storedFactors);
  for (const Slot slot : kAllSlots) {
    text += std::to_string(workspace.At(slot).rows) + "x" +
            std::to_string(workspace.At(slot).cols) + ";";
  }
  for (const bool flag : {workspace.AIsSymmetric, workspace.StoredFactorsValid})
    text += flag ? "+" : "-";
  return text + std::to_string(workspace.eigen.ShiftIndex);
}

std::string RunnerBench::Shown() const {
  std::string text;
  // A number that was found again may have lost the blank before it, and nothing else.
  for (const auto& [name, value] : screen.texts)
    text += name + "=" + value.substr(value.starts_with(' ') ? 1 : 0) + "\n";
  // Printing is possible once any task was pressed, be it in vain.
  for (const auto& [name, on] : screen.enabled) {
    if (name != mnuPrint.name) text += name + (on ? "+\n" : "-\n");
  }
  for (const auto& [name, on] : screen.selected) text += name + (on ? "*\n" : "o\n");
  for (const bool frame : screen.frames) text += frame ? 'F' : 'f';
  for (const Slot slot : kAllSlots) {
    const RecordedGrid& grid = screen.grids[slot];
    // Windows that were only made to hide their entry boxes show nothing.
    if (grid.cols == 0) continue;
    text += "\n" + std::to_string(slot) + (screen.windows[slot] == WindowState::kNone ? "-" : "w");
    text += std::to_string(grid.rows) + "x" + std::to_string(grid.cols);
    for (const auto& [cell, value] : grid.texts)
      text += "|" + std::to_string(cell.first) + "," + std::to_string(cell.second) + value;
  }
  return text;
}

namespace {

void PressSomething(CommandRunner& runner, RecordingScreen& screen, std::mt19937& any) {
  struct Button {
    Control control;
    std::function<void(Context&)> command;
  };
  const auto from = static_cast<Slot>(any() % kSlotCount);
  const std::vector<Button> buttons{
      {cmdCreateA, [](Context& c) { CreateOperand(c, kSlotA); }},
      {cmdCreateB, [](Context& c) { CreateOperand(c, kSlotB); }},
      {cmdClearA, [](Context& c) { ClearOperand(c, kSlotA); }},
      {cmdClearB, [](Context& c) { ClearOperand(c, kSlotB); }},
      {cmdResetA, [](Context& c) { ResetOperand(c, kSlotA); }},
      {cmdResetB, [](Context& c) { ResetOperand(c, kSlotB); }},
      {cmdExchangeAandB, ExchangeAandB},
      {cmdCreateSystem, CreateSystem},
      {cmdClearSystem, [](Context& c) { ClearOperand(c, kSlotSystem); }},
      {cmdResetSystem, ResetSystemCommand},
      {cmdSolve, PressSolve},
      {cmdIntoA(from), [from](Context& c) { CopyInto(c, kSlotA, from); }},
      {cmdIntoB(from), [from](Context& c) { CopyInto(c, kSlotB, from); }},
      {cmdRetrieveLU, RetrieveLU},
      {cmdRetrieveA, [](Context& c) { RetrieveOperand(c, kSlotA); }},
  };
  const Button& button = buttons[any() % buttons.size()];
  if (!screen.Enabled(button.control)) return;
  screen.answers = {any() % 4 == 0 ? Answer::kNo : Answer::kYes};
  screen.fileNames = {button.control == cmdRetrieveLU ? "factors" : "matrix"};
  runner.Step(button.control.ObjectName(), button.command);
}

void TypeSomething(CommandRunner& runner, const Workspace& workspace, std::mt19937& any) {
  const auto slot = any() % 2 == 0 ? kSlotA : kSlotB;
  const Matrix& array = workspace.At(slot).array;
  if (array.Size() == 0) return;
  const int row = 1 + static_cast<int>(any() % array.Rows());
  const int col = 1 + static_cast<int>(any() % array.Cols());
  if (any() % 4 == 0) {
    runner.Paste(slot, row, col, any() % 2 == 0 ? "1\t2\n3\t4\n" : "7\n");
    return;
  }
  const std::string number = CStr(static_cast<int>(any() % 19) - 9);
  runner.EndCell();
  for (std::size_t length = 1; length <= number.size(); ++length)
    runner.WriteCell(slot, row, col, number.substr(0, length));
}

/// Settings that are no step.
void SetSomething(CommandRunner& runner, std::mt19937& any) {
  if (any() % 2 == 0) {
    const Control field = kEigenParameters[any() % kEigenParameters.size()].field;
    const std::string text = CStr(1 + static_cast<int>(any() % 9));
    runner.Do([&](Context& c) { c.panel.SetText(field, text); });
  } else {
    const auto way = static_cast<int>(any() % kSystemKinds);
    runner.Do([way](Context& c) { SelectSystemMethod(c, way); });
  }
}

}  // namespace

void TakeRandomStep(CommandRunner& runner, Workspace& workspace, RecordingScreen& screen,
                    std::mt19937& any) {
  constexpr std::array<int, 17> kTaskNumbers{0, 1,  2,  3,  4,  5,  6,  7, 8,
                                             9, 10, 14, 15, 16, 17, 18, 19};
  switch (any() % 9) {
    case 0:
    case 1: {
      const int task = kTaskNumbers[any() % kTaskNumbers.size()];
      return runner.Step("task", [task](Context& c) { PressTask(c, task); });
    }
    case 2:
      screen.fileNames = {"p"};
      return runner.Step("Open", OpenProject);
    case 3:
    case 4:
      return TypeSomething(runner, workspace, any);
    case 5:
      return SetSomething(runner, any);
    default:
      return PressSomething(runner, screen, any);
  }
}

}  // namespace qmx::test
