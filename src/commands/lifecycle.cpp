// SPDX-License-Identifier: MIT
#include "commands/lifecycle.h"

#include <utility>

#include "base/number_text.h"
#include "commands/parameters.h"
#include "workspace/availability.h"
#include "workspace/field_table.h"
#include "workspace/reset.h"
#include "workspace/staleness.h"

namespace qmx {
namespace {

std::string NameAndText(Context& context, const Control& field) {
  return std::string(InfoOf(field).meaning) + ": \"" + context.panel.Text(field) + "\"";
}

/// Refuses, with a message that names the fields the counts come from, what the machine cannot
/// hold.
bool FitsIntoMemory(Context& context, const Control& rowsField, const Control& colsField,
                    Dimensions wanted) {
  if (CanAllocate(wanted.rows, wanted.cols, context.memory)) return true;
  context.dialogs.ShowMessage(
      {"A matrix of this size does not fit into the memory of this computer.\n" +
           NameAndText(context, rowsField) + "\n" + NameAndText(context, colsField),
       Icon::kCritical});
  return false;
}

/// A slot takes an array whose extent becomes its counts.
void Store(SlotData& data, Matrix array) {
  const int rows = array.Rows();
  const int cols = array.Cols();
  data = SlotData(std::move(array), rows, cols);
}

bool ConfirmReset(Context& context, Slot operand) {
  const std::string matrix = operand == kSlotA ? "A" : "B";
  const std::string text = "This action will reset all results associated with matrix " + matrix +
                           ".\r\rDo you wish to proceed?\r\r";
  return context.dialogs.ShowMessage({text, Icon::kCritical, Buttons::kYesNoCancel, "Warning!"}) ==
         Answer::kYes;
}

/// The dimensions that the selected way of solving gives a new System; nothing after a refusal.
std::optional<Dimensions> SystemDimensions(Context& context) {
  const Workspace& workspace = context.workspace;
  if (workspace.SystemMethod == kSystemByFactors) {
    // Only right-hand sides: the coefficients are the stored factors. Without factors nothing is
    // known.
    const SlotData& system = workspace.At(kSlotSystem);
    if (!workspace.StoredFactorsValid) return Dimensions{system.rows, system.cols};
    const std::optional<int> equations = ReadDimension(context, txtEquations);
    if (!equations) return std::nullopt;
    return Dimensions{*equations, 1};
  }
  if (workspace.SystemMethod == kSystemOverdetermined &&
      Val(context.panel.Text(txtUnknowns)) > Val(context.panel.Text(txtEquations))) {
    context.dialogs.ShowMessage({"Can't have more unknowns than equations", Icon::kCritical});
    return std::nullopt;
  }
  const std::optional<Dimensions> read = ReadDimensions(context, txtEquations, txtUnknowns);
  if (!read) return std::nullopt;
  // The column of the right-hand side joins the unknowns.
  const Dimensions augmented{read->rows, RoundToInteger(read->cols + 1.0)};
  if (!FitsIntoMemory(context, txtEquations, txtUnknowns, augmented)) return std::nullopt;
  return augmented;
}

}  // namespace

std::optional<int> ReadDimension(Context& context, const Control& field, int least) {
  const std::optional<int> count = ParseDimension(context.panel.Text(field), least);
  if (!count) {
    context.dialogs.ShowMessage({NameAndText(context, field) +
                                     "\nThis must be a whole number of at least " + CStr(least) +
                                     ".",
                                 Icon::kCritical});
  }
  return count;
}

std::optional<Dimensions> ReadDimensions(Context& context, const Control& rowsField,
                                         const Control& colsField) {
  const std::optional<int> rows = ReadDimension(context, rowsField);
  if (!rows) return std::nullopt;
  const std::optional<int> cols = ReadDimension(context, colsField);
  if (!cols) return std::nullopt;
  const Dimensions wanted{*rows, *cols};
  if (!FitsIntoMemory(context, rowsField, colsField, wanted)) return std::nullopt;
  return wanted;
}

void CreateOperand(Context& context, Slot operand) {
  const SlotInfo& info = InfoOf(operand);
  const std::optional<Dimensions> size = ReadDimensions(context, info.rows, info.cols);
  if (!size) return;
  Store(context.workspace.At(operand), Matrix(size->rows, size->cols));
  MarkAvailable(context, operand);
  context.windows.ShowWindow(operand);
  context.windows.BringMainToFront();
}

void ClearOperand(Context& context, Slot slot) {
  SlotData& data = context.workspace.At(slot);
  data.array = Matrix(data.array.Rows(), data.array.Cols());
  NoteChange(context.workspace, slot);
  context.windows.HideEntryBox(slot);
  Populate(context, slot);
}

void ResetOperand(Context& context, Slot operand) {
  if (!ConfirmReset(context, operand)) return;
  Workspace& workspace = context.workspace;
  operand == kSlotA ? ResetResultsOfA(context) : ResetResultsOfB(context);
  workspace.*ResultOf(operand).flag = false;
  workspace.computations[ResultOf(operand).result].reset();
  SwitchOperandControls(context, operand, false);
  context.panel.SetEnabled(cmdExchangeAandB, false);
  for (const Control& field : {InfoOf(operand).rows, InfoOf(operand).cols}) {
    context.panel.SetText(field, std::string(kDimensionReset));
  }
  context.windows.CloseWindow(operand);
  Store(workspace.At(operand), Matrix());
}

void CopyInto(Context& context, Slot operand, Slot from) {
  if (from < 0 || from >= kSlotCount || from == operand) return;
  context.windows.HideEntryBox(operand);
  Publish(context, operand, Publication(context.workspace.At(from).array.Shared()));
  context.windows.BringMainToFront();
}

void ExchangeAandB(Context& context) {
  context.windows.HideEntryBox(kSlotA);
  context.windows.HideEntryBox(kSlotB);
  SlotData a = std::exchange(context.workspace.A(), {});
  SlotData b = std::exchange(context.workspace.B(), {});
  Publish(context, kSlotA, Publication(std::move(b.array), b.rows, b.cols));
  Publish(context, kSlotB, Publication(std::move(a.array), a.rows, a.cols));
  context.windows.BringMainToFront();
}

void CreateSystem(Context& context) {
  const std::optional<Dimensions> size = SystemDimensions(context);
  if (!size) return;
  Store(context.workspace.System(), Matrix(size->rows, size->cols));
  // Another way of solving lets a system be created over one that is still there: the grid must not
  // keep numbers that the new one does not hold.
  SetUpSlotGrid(context, kSlotSystem, 0, 0);
  MarkSystemAvailable(context);
  context.windows.ShowWindow(kSlotSystem);
  context.windows.BringMainToFront();
}

void ResetSystemCommand(Context& context) {
  Reset(context, kResultSystem);
  for (const Control& field : {txtEquations, txtUnknowns}) {
    context.panel.SetText(field, std::string(kDimensionReset));
  }
  SelectSystemMethod(context, kSystemOneShot);
}

}  // namespace qmx
