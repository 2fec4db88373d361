// SPDX-License-Identifier: MIT
#include "commands/parameters.h"

#include <string>

#include "base/number_text.h"
#include "workspace/availability.h"
#include "workspace/field_table.h"
#include "workspace/result_table.h"

namespace qmx {
namespace {

bool CreatedIsSquare(const Context& context) {
  return context.panel.IsSelected(OptCreate(kCreateIdentity)) ||
         context.panel.IsSelected(chkSymmetric);
}

/// A square special matrix: its columns follow its rows.
void CopyRowsIntoColsCreated(Context& context) {
  context.panel.SetText(txtColsCreated, context.panel.Text(txtRowsCreated));
}

/// The controls that depend on the way of solving.
constexpr std::array<Control, kSolvingControlCount> kSolvingControls{
    cmdRetrieveLU, txtEquations, txtUnknowns, cmdCreateSystem, cmdRetrieveSystem};

void EnableSystemCreation(Context& context, bool enabled) {
  context.panel.SetEnabled(cmdCreateSystem, enabled);
  context.panel.SetEnabled(cmdRetrieveSystem, enabled);
}

}  // namespace

void SetStartState(Context& context) {
  Panel& panel = context.panel;
  for (const FieldInfo& field : kFields) {
    panel.SetText(field.control, std::string(field.start));
    panel.SetEnabled(field.control, true);
  }
  for (const OptionInfo& option : kOptions) {
    if (option.selectedAtStart) panel.Select(option.control);
  }
  for (const SlotInfo& info : kSlots) {
    if (!HasPermanentFrame(info.slot)) {
      panel.SetText(info.rows, "");
      panel.SetText(info.cols, "");
    }
    HideResult(context, info.slot);
  }
  for (const ResultInfo& info : kResults) {
    if (!info.HasMatrices()) panel.SetText(info.label, "");
  }
  SwitchOperandControls(context, kSlotA, false);
  SwitchOperandControls(context, kSlotB, false);
  SwitchSystemControls(context, false);
  for (const Control& control : {cmdExchangeAandB, mnuPrint, cmdShowResults, cmdSaveLU}) {
    panel.SetEnabled(control, false);
  }
  OptSystemClick(context, context.workspace.SystemMethod);
}

void OptCreateClick(Context& context, int option) {
  if (option == kCreateIdentity) {
    CopyRowsIntoColsCreated(context);
    context.panel.SetEnabled(txtColsCreated, false);
  } else if (!context.panel.IsSelected(chkSymmetric)) {
    context.panel.SetEnabled(txtColsCreated, true);
  }
}

void ChkSymmetricClick(Context& context) {
  const bool checked = context.panel.IsSelected(chkSymmetric);
  if (checked) CopyRowsIntoColsCreated(context);
  context.panel.SetEnabled(txtColsCreated, !checked);
}

void TxtRowsCreatedChange(Context& context) {
  if (CreatedIsSquare(context)) CopyRowsIntoColsCreated(context);
}

void TxtEquationsChange(Context& context) {
  if (!context.panel.IsSelected(OptSystem(kSystemOneShot))) return;
  context.panel.SetText(txtUnknowns, context.panel.Text(txtEquations));
}

void OptSystemClick(Context& context, int method) {
  Workspace& workspace = context.workspace;
  Panel& panel = context.panel;
  const bool byFactors = method == kSystemByFactors;
  workspace.SystemMethod = static_cast<std::int16_t>(method);
  panel.SetEnabled(cmdRetrieveLU, byFactors);
  panel.SetEnabled(txtEquations, !byFactors);
  panel.SetEnabled(txtUnknowns, method == kSystemOverdetermined);
  EnableSystemCreation(context, !byFactors || workspace.StoredFactorsValid);
  if (!byFactors || !workspace.StoredFactorsValid) return;
  const std::string order = CStr(workspace.storedFactors.lRows);
  panel.SetText(txtEquations, order);
  panel.SetText(txtUnknowns, order);
}

void SelectSystemMethod(Context& context, int method) {
  context.panel.Select(OptSystem(method));
  OptSystemClick(context, method);
}

EigenTexts ReadEigenTexts(const Panel& panel) {
  EigenTexts texts;
  for (std::size_t i = 0; i < texts.size(); ++i) texts[i] = panel.Text(kEigenParameters[i].field);
  return texts;
}

ProjectSettings ReadSettings(const Context& context) {
  const Panel& panel = context.panel;
  ProjectSettings settings{ReadEigenTexts(panel),
                           context.workspace.SystemMethod,
                           panel.Text(txtEquations),
                           panel.Text(txtUnknowns),
                           {}};
  for (std::size_t i = 0; i < kSolvingControls.size(); ++i)
    settings.enabled[i] = panel.IsEnabled(kSolvingControls[i]);
  return settings;
}

void RestoreSettings(Context& context, const ProjectSettings& settings) {
  if (settings == ReadSettings(context)) return;
  Panel& panel = context.panel;
  for (std::size_t i = 0; i < settings.eigen.size(); ++i)
    panel.SetText(kEigenParameters[i].field, settings.eigen[i]);
  panel.SetText(txtEquations, settings.equations);
  panel.SetText(txtUnknowns, settings.unknowns);
  panel.Select(OptSystem(settings.systemMethod));
  for (std::size_t i = 0; i < kSolvingControls.size(); ++i)
    panel.SetEnabled(kSolvingControls[i], settings.enabled[i]);
  context.workspace.SystemMethod = settings.systemMethod;
}

FiledSettings FiledSettingsOf(const Context& context) {
  const ResultFlags flags = FlagsOf(context.workspace);
  FiledSettings filed;
  if (flags[kResultEigenvalues]) {
    auto& numbers = filed.eigen.emplace();
    for (std::size_t i = 0; i < numbers.size(); ++i)
      numbers[i] = Val(context.panel.Text(kEigenParameters[i].field));
  }
  if (flags[kResultSystem]) filed.systemMethod = context.workspace.SystemMethod;
  return filed;
}

}  // namespace qmx
