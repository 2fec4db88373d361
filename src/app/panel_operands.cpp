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
  AddButton(making, isA ? cmdCreateA : cmdCreateB, "Create", frame);
  AddButton(making, isA ? cmdRetrieveA : cmdRetrieveB, "Retrieve", frame);
  QHBoxLayout* usingIt = AddRow(rows);
  AddButton(usingIt, isA ? cmdClearA : cmdClearB, "Clear", frame);
  AddButton(usingIt, isA ? cmdResetA : cmdResetB, "Reset", frame);
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
  QHBoxLayout* sizes = AddRow(rows);
  AddField(sizes, txtEquations, frame, {"lblNumEquations"});
  AddField(sizes, txtUnknowns, frame, {"lblNumUnknowns"});
  QHBoxLayout* making = AddRow(rows);
  AddButton(making, cmdCreateSystem, "Create", frame);
  AddButton(making, cmdRetrieveSystem, "Retrieve", frame);
  AddButton(making, cmdClearSystem, "Clear", frame);
  AddButton(making, cmdResetSystem, "Reset", frame);
  AddButton(making, cmdSolve, "Solve", frame);
  QHBoxLayout* usingIt = AddRow(rows);
  AddSlotButtons(usingIt, kSlotSystem, frame);
  QHBoxLayout* factors = AddRow(rows);
  AddButton(factors, cmdRetrieveLU, "Retrieve LU factors", frame);
  AddButton(factors, cmdSaveLU, "Save LU factors", frame, "Saves LU factors in a separate file");
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
  QHBoxLayout* usingIt = AddRow(rows);
  AddSlotButtons(usingIt, kSlotCreated, frame);
  return frame;
}

}  // namespace qmx
