// SPDX-License-Identifier: MIT
// The panels of what goes into the tasks: A, B, the system of equations, the special matrix.

#include <QGridLayout>

#include "app/panel_kit.h"
#include "app/panels.h"
#include "workspace/slot_table.h"

namespace qmx {
QWidget* BuildOperandPanel(Slot operand, QWidget* parent) {
  const bool isA = operand == kSlotA;
  const SlotInfo& info = InfoOf(operand);
  QGroupBox* frame = MakeSlotFrame(operand, parent);
  QVBoxLayout* rows = MakeRows(frame);
  QHBoxLayout* making = AddRow(rows);
  AddField(making, info.rows, frame);
  AddField(making, info.cols, frame);
  making->addWidget(MakeButton(isA ? cmdCreateA : cmdCreateB, "Create", frame), 1);
  ButtonRow* usingIt = AddButtonRow(rows);
  const auto add = [&](const Control& control, const char* caption, const char* icon) {
    usingIt->Add(MakeIconButton(control, caption, icon, frame));
  };
  add(isA ? cmdRetrieveA : cmdRetrieveB, "Retrieve", "retrieve");
  add(isA ? cmdClearA : cmdClearB, "Clear", "clear");
  add(isA ? cmdResetA : cmdResetB, "Reset", "reset");
  AddSlotButtons(usingIt, operand, frame);
  return frame;
}

QWidget* BuildExchangeButton(QWidget* parent) {
  return new CommandButton(cmdExchangeAandB, "E&xchange A and B", parent);
}

QWidget* BuildSystemPanel(QWidget* parent) {
  QGroupBox* frame = MakeSlotFrame(kSlotSystem, parent);
  QVBoxLayout* rows = MakeRows(frame);
  for (int method = 0; method < kSystemKinds; ++method)
    rows->addWidget(MakeOption(OptSystem(method), frame));
  Field* equations = MakeField(txtEquations, frame);
  Field* unknowns = MakeField(txtUnknowns, frame);
  auto* sizes = new QGridLayout;
  sizes->setSpacing(4);
  sizes->setColumnStretch(2, 1);
  rows->addLayout(sizes);
  sizes->addWidget(MakeCaption(equations, txtEquations, {"lblNumEquations"}, frame), 0, 0);
  sizes->addWidget(equations, 0, 1);
  sizes->addWidget(MakeButton(cmdCreateSystem, "Create", frame), 0, 2);
  sizes->addWidget(MakeCaption(unknowns, txtUnknowns, {"lblNumUnknowns"}, frame), 1, 0);
  sizes->addWidget(unknowns, 1, 1);
  sizes->addWidget(MakeButton(cmdSolve, "Solve", frame), 1, 2);
  ButtonRow* usingIt = AddButtonRow(rows);
  usingIt->Add(MakeIconButton(cmdRetrieveSystem, "Retrieve", "retrieve", frame));
  usingIt->Add(MakeIconButton(cmdClearSystem, "Clear", "clear", frame));
  usingIt->Add(MakeIconButton(cmdResetSystem, "Reset", "reset", frame));
  AddSlotButtons(usingIt, kSlotSystem, frame);
  ButtonRow* factors = AddButtonRow(rows);
  factors->Add(MakeButton(cmdRetrieveLU, "Retrieve LU factors", frame));
  factors->Add(
      MakeButton(cmdSaveLU, "Save LU factors", frame, "Saves LU factors in a separate file"));
  return frame;
}

QWidget* BuildSpecialMatrixPanel(QWidget* parent) {
  QGroupBox* frame = MakeSlotFrame(kSlotCreated, parent);
  QVBoxLayout* rows = MakeRows(frame);
  auto* kinds = new QGridLayout;
  kinds->setSpacing(4);
  rows->addLayout(kinds);
  for (int kind = 0; kind < kCreateOptions; ++kind) {
    kinds->addWidget(MakeOption(OptCreate(kind), frame), kind / 2, kind % 2);
  }
  kinds->addWidget(MakeOption(chkSymmetric, frame), 0, 2);
  kinds->addWidget(MakeOption(chkIntegers, frame), 1, 2);

  QGroupBox* random = MakeFrame({"fraRandom"}, "For random matrix", frame);
  rows->addWidget(random);
  QHBoxLayout* bounds = AddRow(MakeRows(random));
  bounds->addWidget(MakeField(txtRandLow, random), 1);
  bounds->addWidget(MakeLabel({"lblRandom"}, "<=elements<=", random));
  bounds->addWidget(MakeField(txtRandHigh, random), 1);

  QHBoxLayout* sizes = AddRow(rows);
  AddField(sizes, txtRowsCreated, frame);
  AddField(sizes, txtColsCreated, frame);
  rows->addWidget(MakeTaskButton(kTaskSpecialMatrix, frame));
  AddSlotButtons(AddButtonRow(rows), kSlotCreated, frame);
  return frame;
}

}  // namespace qmx
