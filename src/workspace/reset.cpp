// SPDX-License-Identifier: MIT
#include "workspace/reset.h"

#include <array>
#include <string>

#include "workspace/availability.h"
#include "workspace/field_table.h"

namespace qmx {
namespace {

/// What the reset of A erases, one after the other. That of B takes those that B takes part in.
constexpr std::array<Result, 13> kResetOrder{
    kResultSum,      kResultDifference,  kResultProduct,  kResultDeterminant, kResultTrace,
    kResultInverse,  kResultAdjoint,     kResultLU,       kResultQR,          kResultDefiniteness,
    kResultSymmetry, kResultEigenvalues, kResultTranspose};

void ResetResultsFrom(Context& context, unsigned origin) {
  for (const Result result : kResetOrder) {
    if ((InfoOf(result).operands & origin) != 0) Reset(context, result);
  }
}

/// The stored factors go with L and U unless they have become the System's own.
void ResetStoredFactors(Context& context) {
  Workspace& workspace = context.workspace;
  if (workspace.StoredFactorsValid) return;
  context.panel.SetEnabled(cmdSaveLU, false);
  workspace.storedFactors = StoredFactors();
  if (!context.panel.IsSelected(OptSystem(kSystemByFactors))) return;
  for (const Control& field : {txtEquations, txtUnknowns}) {
    context.panel.SetText(field, std::string(kDimensionReset));
  }
  for (const Control& button : {cmdCreateSystem, cmdRetrieveSystem})
    context.panel.SetEnabled(button, false);
}

/// What only one result has.
void ResetTheRest(Context& context, Result result) {
  if (result == kResultLU) ResetStoredFactors(context);
  if (result == kResultSymmetry) context.workspace.AIsSymmetric = false;
  if (result == kResultEigenvalues) context.workspace.eigen = EigenState();
  if (result == kResultSystem) SwitchSystemControls(context, false);
}

}  // namespace

void EraseSlot(Context& context, Slot slot) {
  SlotData& data = context.workspace.At(slot);
  data.rows = 0;
  data.cols = slot == kSlotExchanges ? 1 : 0;
  if (!HasPermanentFrame(slot)) {
    context.panel.SetText(InfoOf(slot).rows, "");
    context.panel.SetText(InfoOf(slot).cols, "");
  }
  data.array = Matrix();
  context.windows.CloseWindow(slot);
  HideResult(context, slot);
}

void Reset(Context& context, Result result) {
  Workspace& workspace = context.workspace;
  const ResultInfo& info = InfoOf(result);
  ForEachSlot(info, [&](Slot slot) { EraseSlot(context, slot); });
  if (!info.HasMatrices()) context.panel.SetText(info.label, "");
  if (info.number != nullptr) workspace.*info.number = 0;
  if (info.verdict != nullptr) (workspace.*info.verdict).clear();
  workspace.*info.flag = false;
  workspace.computations[result].reset();
  if (info.takesAlong != kNoResult) Reset(context, info.takesAlong);
  ResetTheRest(context, result);
}

void ResetResultsOfA(Context& context) { ResetResultsFrom(context, kFromA); }

void ResetResultsOfB(Context& context) { ResetResultsFrom(context, kFromB); }

}  // namespace qmx
