// SPDX-License-Identifier: MIT
#include "commands/file_apply.h"

#include <utility>

#include "algorithms/lu.h"
#include "base/number_text.h"
#include "commands/parameters.h"
#include "workspace/availability.h"
#include "workspace/staleness.h"

namespace qmx {
namespace {

/// The Permutation is not in the file: the map of exchanges tells it.
void RebuildPermutation(Context& context) {
  const Matrix& exchanges = context.workspace.At(kSlotExchanges).array;
  Publish(context, kSlotPermutation, Publication(PermutationOf(exchanges)), Showing::kFromFile);
}

void ApplyEigenvalues(Context& context, const EigenSection& section) {
  EigenState& eigen = context.workspace.eigen;
  eigen.VectorStatus = section.status;
  eigen.EigenOrigin = section.origin;
  Matrix values(section.Count(), 1);
  for (int i = 1; i <= section.Count(); ++i) values(i, 1) = section.values[i - 1];
  Publish(context, kSlotEigenvalues, Publication(std::move(values)), Showing::kInPlace);
}

void ApplyEigenvectors(Context& context, const EigenSection& section) {
  if (section.vectorCount == 0) {
    context.workspace.At(kSlotEigenvectors) = {section.Vectors(), section.rows, section.Count()};
    return;
  }
  Publish(context, kSlotEigenvectors, Publication(section.Vectors()), Showing::kInPlace);
  // The caption counts the vectors found; the matrix keeps a column for every eigenvalue.
  context.panel.SetText(InfoOf(kSlotEigenvectors).cols, CStr(section.vectorCount));
}

void ApplyEigen(Context& context, const EigenSection& section) {
  for (std::size_t i = 0; i < kEigenParameters.size(); ++i)
    context.panel.SetText(kEigenParameters[i].field, CStrExact(section.parameters[i]));
  context.workspace.eigen.EigenCount = section.Count();
  if (section.Count() == 0) return;
  context.workspace.eigen.ConvergedCount = section.vectorCount;
  ApplyEigenvalues(context, section);
  ApplyEigenvectors(context, section);
}

/// The texts of the System's two fields. A system by factors has as many unknowns as equations;
/// otherwise the last column is the right-hand side.
void ShowSystemDimensions(Context& context, int kind) {
  const SlotData& system = context.workspace.System();
  const int unknowns = kind == kSystemOverdetermined ? system.cols - 1 : system.rows;
  context.panel.SetText(txtEquations, CStr(system.rows));
  context.panel.SetText(txtUnknowns, CStr(unknowns));
}

void ApplyMatrices(Context& context, const ResultInfo& info, ProjectImage& image) {
  ForEachSlot(info, [&](Slot slot) {
    if (IsFiled(slot)) ApplyMatrix(context, slot, std::move(image.matrices[slot]));
  });
  if (info.result == kResultExchanges) RebuildPermutation(context);
}

void ApplyResult(Context& context, const ResultInfo& info, ProjectImage& image) {
  Workspace& workspace = context.workspace;
  switch (info.kind) {
    case ResultKind::kMatrices:
      return ApplyMatrices(context, info, image);
    case ResultKind::kNumber:
      workspace.*info.number = image.numbers[info.result];
      return context.panel.SetText(info.label, CStr(image.numbers[info.result]));
    case ResultKind::kVerdict:
      workspace.*info.verdict = image.verdicts[info.result];
      return context.panel.SetText(info.label, image.verdicts[info.result]);
    case ResultKind::kEigenvalues:
      return ApplyEigen(context, image.eigen);
    case ResultKind::kEigenvectors:
      return;
    case ResultKind::kSystem:
      return ApplySystem(context, std::move(image.system));
  }
}

}  // namespace

void ApplyMatrix(Context& context, Slot slot, MatrixSection section) {
  // An editor's entry box must not lie over another number.
  if (InfoOf(slot).IsEditor()) context.windows.HideEntryBox(slot);
  Publish(context, slot, Publication(std::move(section.array), section.rows, section.cols),
          Showing::kFromFile);
}

void ApplySystem(Context& context, SystemSection section) {
  SelectSystemMethod(context, section.kind);
  if (section.factors) ApplyFactors(context, std::move(*section.factors));
  ApplyMatrix(context, kSlotSystem, std::move(section.matrix));
  ShowSystemDimensions(context, section.kind);
}

void ApplyFactors(Context& context, StoredFactors factors) {
  StoredFactors& stored = context.workspace.storedFactors;
  if (factors.uRows == factors.uCols) {
    if (factors.uRows == 0) return;
    stored = std::move(factors);
    context.workspace.StoredFactorsValid = true;
    context.panel.SetEnabled(cmdSaveLU, true);
    return;
  }
  context.dialogs.ShowMessage({"ERROR: INCORRECT DIMENSIONALITY. U FACTOR IS NOT SQUARE."});
  stored.lRows = factors.lRows;
  stored.lCols = factors.lCols;
  stored.uRows = factors.uRows;
  stored.uCols = factors.uCols;
  stored.exchangeRows = factors.exchangeRows;
}

void ApplyProject(Context& context, ProjectImage image) {
  context.panel.SetEnabled(mnuPrint, true);
  context.panel.SetEnabled(cmdShowResults, true);
  SetFlags(context.workspace, image.flags);
  for (const ResultInfo& info : kResults) {
    if (Holds(image.flags, info.result)) ApplyResult(context, info, image);
  }
  context.workspace.manner = {};
  // What a project holds counts as computed from the operands that it holds.
  for (const ResultInfo& info : kResults) NoteComputed(context.workspace, info.result);
  context.workspace.computedNow = {};
}

}  // namespace qmx
