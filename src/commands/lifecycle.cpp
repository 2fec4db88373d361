#include "commands/lifecycle.h"

#include <utility>

#include "base/number_text.h"
#include "commands/parameters.h"
#include "workspace/availability.h"
#include "workspace/field_table.h"
#include "workspace/reset.h"
#include "workspace/system_kind.h"

namespace qmx {
namespace {

std::string NameAndText(Context& context, const Control& field) {
  return std::string(InfoOf(field).meaning) + ": \"" + context.screen.Text(field) + "\"";
}

/// Refuses, with a message that names the fields the counts come from, what the machine cannot
/// hold.
bool FitsIntoMemory(Context& context, const Control& rowsField, const Control& colsField,
                    Dimensions wanted) {
  if (CanAllocate(wanted.rows, wanted.cols)) return true;
  context.screen.ShowMessage(
      {"A matrix of this size does not fit into the memory of this computer.\n" +
           NameAndText(context, rowsField) + "\n" + NameAndText(context, colsField),
       Icon::kCritical});
  return false;
}

/// A slot takes an array whose extent becomes its counts.
void Store(SlotData& data, Matrix array) {
  data.rows = array.Rows();
  data.cols = array.Cols();
  data.array = std::move(array);
}

void MarkOperandCreated(Context& context, int operand) {
  operand == kSlotA ? MarkACreated(context) : MarkBCreated(context);
}

/// What copying and exchanging end with, apart from the main window.
void ShowOperand(Context& context, int operand) {
  ShowDimensions(context, operand);
  MarkOperandCreated(context, operand);
  Populate(context, operand);
  context.screen.ShowWindow(operand);
}

bool ConfirmReset(Context& context, int operand) {
  const std::string matrix = operand == kSlotA ? "A" : "B";
  const std::string text = "This action will reset all results associated with matrix " + matrix +
                           ".\r\rDo you wish to proceed?\r\r";
  return context.screen.ShowMessage({text, Icon::kCritical, Buttons::kYesNoCancel, "Warning!"}) ==
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
      Val(context.screen.Text(txtUnknowns)) > Val(context.screen.Text(txtEquations))) {
    context.screen.ShowMessage({"Can't have more unknowns than equations", Icon::kCritical});
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
  const std::optional<int> count = ParseDimension(context.screen.Text(field), least);
  if (!count) {
    context.screen.ShowMessage({NameAndText(context, field) +
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

void CreateOperand(Context& context, int operand) {
  const SlotInfo& info = InfoOf(operand);
  const std::optional<Dimensions> size = ReadDimensions(context, info.rows, info.cols);
  if (!size) return;
  Store(context.workspace.At(operand), Matrix(size->rows, size->cols));
  MarkOperandCreated(context, operand);
  context.screen.ShowWindow(operand);
  context.screen.BringMainToFront();
}

void ClearOperand(Context& context, int slot) {
  SlotData& data = context.workspace.At(slot);
  data.array = Matrix(data.array.Rows(), data.array.Cols());
  context.screen.HideEntryBox(slot);
  Populate(context, slot);
}

void ResetOperand(Context& context, int operand) {
  if (!ConfirmReset(context, operand)) return;
  Workspace& workspace = context.workspace;
  operand == kSlotA ? ResetResultsOfA(context) : ResetResultsOfB(context);
  (operand == kSlotA ? workspace.ACreated : workspace.BCreated) = false;
  SwitchOperandControls(context, operand, false);
  context.screen.SetEnabled(cmdExchangeAandB, false);
  for (const Control& field : {InfoOf(operand).rows, InfoOf(operand).cols}) {
    context.screen.SetText(field, std::string(kDimensionReset));
  }
  context.screen.CloseWindow(operand);
  SlotData& data = workspace.At(operand);
  Store(data, Matrix());
  data.gridRows = data.gridCols = 0;
}

void CopyInto(Context& context, int operand, int from) {
  if (from < 0 || from >= kSlotCount || from == operand) return;
  context.screen.HideEntryBox(operand);
  Store(context.workspace.At(operand), Matrix(context.workspace.At(from).array));
  ShowOperand(context, operand);
  context.screen.BringMainToFront();
}

void ExchangeAandB(Context& context) {
  context.screen.HideEntryBox(kSlotA);
  context.screen.HideEntryBox(kSlotB);
  SlotData& a = context.workspace.A();
  SlotData& b = context.workspace.B();
  a.array.Swap(b.array);
  std::swap(a.rows, b.rows);
  std::swap(a.cols, b.cols);
  ShowOperand(context, kSlotA);
  ShowOperand(context, kSlotB);
  context.screen.BringMainToFront();
}

void CreateSystem(Context& context) {
  const std::optional<Dimensions> size = SystemDimensions(context);
  if (!size) return;
  Store(context.workspace.System(), Matrix(size->rows, size->cols));
  // Another way of solving lets a system be created over one that is still there: the grid must not
  // keep numbers that the new one does not hold.
  SetUpSlotGrid(context, kSlotSystem, 0, 0);
  MarkSystemAvailable(context);
  context.screen.ShowWindow(kSlotSystem);
  context.screen.BringMainToFront();
}

void ResetSystemCommand(Context& context) {
  ResetSystem(context);
  for (const Control& field : {txtEquations, txtUnknowns}) {
    context.screen.SetText(field, std::string(kDimensionReset));
  }
  SelectSystemMethod(context, kSystemOneShot);
}

}  // namespace qmx
