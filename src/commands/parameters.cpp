#include "commands/parameters.h"

#include <string>

#include "base/number_text.h"
#include "workspace/availability.h"
#include "workspace/field_table.h"
#include "workspace/system_kind.h"

namespace qmx {
namespace {

constexpr int kIdentityOption = 2;

bool CreatedIsSquare(const Context& context) {
  return context.screen.IsSelected(OptCreate(kIdentityOption)) ||
         context.screen.IsSelected(chkSymmetric);
}

/// A square special matrix: its columns follow its rows.
void CopyRowsIntoColsCreated(Context& context) {
  context.screen.SetText(txtColsCreated, context.screen.Text(txtRowsCreated));
}

void EnableSystemCreation(Context& context, bool enabled) {
  context.screen.SetEnabled(cmdCreateSystem, enabled);
  context.screen.SetEnabled(cmdRetrieveSystem, enabled);
}

}  // namespace

void SetStartState(Context& context) {
  Screen& screen = context.screen;
  for (const FieldInfo& field : kFields) {
    screen.SetText(field.control, std::string(field.start));
    screen.SetEnabled(field.control, true);
  }
  for (const OptionInfo& option : kOptions) {
    if (option.selectedAtStart) screen.Select(option.control);
  }
  for (const SlotInfo& info : kSlots) {
    if (!HasPermanentFrame(info.slot)) {
      screen.SetText(info.rows, "");
      screen.SetText(info.cols, "");
    }
    HideResult(context, info.slot);
  }
  for (const Control& label : {lblDeterminantOfA, lblTraceOfA, lblDefiniteness, lblSymmetry}) {
    screen.SetText(label, "");
  }
  SwitchOperandControls(context, kSlotA, false);
  SwitchOperandControls(context, kSlotB, false);
  SwitchSystemControls(context, false);
  for (const Control& control : {cmdExchangeAandB, mnuPrint, cmdShowResults, cmdSaveLU}) {
    screen.SetEnabled(control, false);
  }
  OptSystemClick(context, context.workspace.SystemMethod);
}

void OptCreateClick(Context& context, int option) {
  if (option == kIdentityOption) {
    CopyRowsIntoColsCreated(context);
    context.screen.SetEnabled(txtColsCreated, false);
  } else if (!context.screen.IsSelected(chkSymmetric)) {
    context.screen.SetEnabled(txtColsCreated, true);
  }
}

void ChkSymmetricClick(Context& context) {
  const bool checked = context.screen.IsSelected(chkSymmetric);
  if (checked) CopyRowsIntoColsCreated(context);
  context.screen.SetEnabled(txtColsCreated, !checked);
}

void TxtRowsCreatedChange(Context& context) {
  if (CreatedIsSquare(context)) CopyRowsIntoColsCreated(context);
}

void TxtEquationsChange(Context& context) {
  if (!context.screen.IsSelected(OptSystem(kSystemOneShot))) return;
  context.screen.SetText(txtUnknowns, context.screen.Text(txtEquations));
}

void OptSystemClick(Context& context, int method) {
  Workspace& workspace = context.workspace;
  Screen& screen = context.screen;
  const bool byFactors = method == kSystemByFactors;
  workspace.SystemMethod = static_cast<std::int16_t>(method);
  screen.SetEnabled(cmdRetrieveLU, byFactors);
  screen.SetEnabled(txtEquations, !byFactors);
  screen.SetEnabled(txtUnknowns, method == kSystemOverdetermined);
  EnableSystemCreation(context, !byFactors || workspace.StoredFactorsValid);
  if (!byFactors || !workspace.StoredFactorsValid) return;
  const std::string order = CStr(workspace.storedFactors.lRows);
  screen.SetText(txtEquations, order);
  screen.SetText(txtUnknowns, order);
}

void SelectSystemMethod(Context& context, int method) {
  context.screen.Select(OptSystem(method));
  OptSystemClick(context, method);
}

}  // namespace qmx
