#include "workspace/reset.h"

#include <string>

#include "workspace/availability.h"
#include "workspace/field_table.h"
#include "workspace/system_kind.h"

namespace qmx {
namespace {

/// What every reset of a matrix does. Captions are those of labels: fields keep their text.
void EraseSlot(Context& context, int slot) {
  SlotData& data = context.workspace.At(slot);
  data.rows = 0;
  data.cols = slot == kSlotExchanges ? 1 : 0;
  if (!HasPermanentFrame(slot)) {
    context.screen.SetText(InfoOf(slot).rows, "");
    context.screen.SetText(InfoOf(slot).cols, "");
  }
  data.array = Matrix();
  data.gridRows = data.gridCols = 0;
  context.screen.CloseWindow(slot);
  HideResult(context, slot);
  data.present = false;
}

void EraseScalar(Context& context, const Control& label, bool& computed) {
  context.screen.SetText(label, "");
  computed = false;
}

}  // namespace

void ResetSum(Context& context) {
  EraseSlot(context, kSlotSum);
  context.workspace.SumComputed = false;
}

void ResetDifference(Context& context) {
  EraseSlot(context, kSlotDifference);
  context.workspace.DifferenceComputed = false;
}

void ResetProduct(Context& context) {
  EraseSlot(context, kSlotProduct);
  context.workspace.ProductComputed = false;
}

void ResetDeterminant(Context& context) {
  EraseScalar(context, lblDeterminantOfA, context.workspace.DeterminantComputed);
  context.workspace.determinant = 0;
}

void ResetTrace(Context& context) {
  EraseScalar(context, lblTraceOfA, context.workspace.TraceComputed);
  context.workspace.trace = 0;
}

void ResetInverse(Context& context) {
  EraseSlot(context, kSlotInverse);
  context.workspace.InverseComputed = false;
}

void ResetAdjoint(Context& context) {
  EraseSlot(context, kSlotAdjoint);
  context.workspace.AdjointComputed = false;
}

void ResetLU(Context& context) {
  Workspace& workspace = context.workspace;
  for (const int slot : {kSlotL, kSlotU, kSlotPermutation, kSlotExchanges})
    EraseSlot(context, slot);
  workspace.LUComputed = false;
  if (workspace.StoredFactorsValid) return;
  context.screen.SetEnabled(cmdSaveLU, false);
  workspace.storedFactors = StoredFactors();
  if (!context.screen.IsSelected(OptSystem(kSystemByFactors))) return;
  for (const Control& field : {txtEquations, txtUnknowns}) {
    context.screen.SetText(field, std::string(kDimensionReset));
  }
  for (const Control& button : {cmdCreateSystem, cmdRetrieveSystem})
    context.screen.SetEnabled(button, false);
}

void ResetQR(Context& context) {
  EraseSlot(context, kSlotQ);
  EraseSlot(context, kSlotR);
  context.workspace.QRComputed = false;
}

void ResetDefiniteness(Context& context) {
  EraseScalar(context, lblDefiniteness, context.workspace.DefinitenessComputed);
  context.workspace.definitenessText.clear();
}

void ResetSymmetry(Context& context) {
  EraseScalar(context, lblSymmetry, context.workspace.SymmetryComputed);
  context.workspace.AIsSymmetric = false;
  context.workspace.symmetryText.clear();
}

void ResetEigen(Context& context) {
  EraseSlot(context, kSlotEigenvalues);
  EraseSlot(context, kSlotEigenvectors);
  context.workspace.eigen = EigenState();
  context.workspace.EigenvaluesComputed = false;
  context.workspace.EigenvectorsComputed = false;
}

void ResetTranspose(Context& context) {
  EraseSlot(context, kSlotTranspose);
  context.workspace.TransposeComputed = false;
}

void ResetSystem(Context& context) {
  EraseSlot(context, kSlotSystem);
  EraseSlot(context, kSlotSolution);
  context.workspace.SolutionComputed = false;
  SwitchSystemControls(context, false);
}

void ResetResultsOfA(Context& context) {
  for (const auto reset : {ResetSum, ResetDifference, ResetProduct, ResetDeterminant, ResetTrace,
                           ResetInverse, ResetAdjoint, ResetLU, ResetQR, ResetDefiniteness,
                           ResetSymmetry, ResetEigen, ResetTranspose}) {
    reset(context);
  }
}

void ResetResultsOfB(Context& context) {
  for (const auto reset : {ResetSum, ResetDifference, ResetProduct}) reset(context);
}

}  // namespace qmx
