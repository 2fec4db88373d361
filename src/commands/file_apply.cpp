#include "commands/file_apply.h"

#include <utility>

#include "algorithms/lu.h"
#include "base/number_text.h"
#include "commands/parameters.h"
#include "workspace/availability.h"

namespace qmx {
namespace {

void Store(Context& context, int slot, MatrixSection section) {
  if (InfoOf(slot).IsEditor()) context.screen.HideEntryBox(slot);
  SlotData& data = context.workspace.At(slot);
  data.array = std::move(section.array);
  data.rows = section.rows;
  data.cols = section.cols;
}

void MarkSlot(Context& context, int slot) {
  switch (slot) {
    case kSlotA:
      return MarkACreated(context);
    case kSlotB:
      return MarkBCreated(context);
    case kSlotSystem:
      return MarkSystemAvailable(context);
    default:
      return MarkAvailable(context, slot);
  }
}

/// The Permutation is not in the file: the map of exchanges tells it.
void RebuildPermutation(Context& context) {
  const Matrix& exchanges = context.workspace.At(kSlotExchanges).array;
  const int rows = exchanges.Rows();
  ApplyMatrix(context, kSlotPermutation, {PermutationOf(exchanges), rows, rows});
}

void ApplyEigenvalues(Context& context, const EigenSection& section) {
  EigenState& eigen = context.workspace.eigen;
  eigen.VectorStatus = section.status;
  eigen.EigenOrigin = section.origin;
  MatrixSection values{Matrix(section.Count(), 1), section.Count(), 1};
  for (int i = 1; i <= section.Count(); ++i) values.array(i, 1) = section.values[i - 1];
  Store(context, kSlotEigenvalues, std::move(values));
  context.screen.SetText(InfoOf(kSlotEigenvalues).rows, CStr(section.Count()));
  MarkAvailable(context, kSlotEigenvalues);
  Populate(context, kSlotEigenvalues);
}

void ApplyEigenvectors(Context& context, const EigenSection& section) {
  Store(context, kSlotEigenvectors, {section.Vectors(), section.rows, section.Count()});
  if (section.vectorCount == 0) return;
  context.screen.SetText(InfoOf(kSlotEigenvectors).rows, CStr(section.rows));
  // The caption counts the vectors found; the matrix keeps a column for every eigenvalue.
  context.screen.SetText(InfoOf(kSlotEigenvectors).cols, CStr(section.vectorCount));
  MarkAvailable(context, kSlotEigenvectors);
  Populate(context, kSlotEigenvectors);
}

void ApplyEigen(Context& context, const EigenSection& section) {
  for (std::size_t i = 0; i < kEigenFields.size(); ++i)
    context.screen.SetText(kEigenFields[i], CStr(section.parameters[i]));
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
  context.screen.SetText(txtEquations, CStr(system.rows));
  context.screen.SetText(txtUnknowns, CStr(unknowns));
}

void ApplySection(Context& context, const ProjectSectionInfo& section, ProjectImage& image) {
  Workspace& workspace = context.workspace;
  switch (section.kind) {
    case SectionKind::kMatrix:
      ApplyMatrix(context, section.slot, std::move(image.matrices[section.slot]));
      if (section.slot == kSlotExchanges) RebuildPermutation(context);
      return;
    case SectionKind::kDeterminant:
      workspace.determinant = image.determinant;
      return context.screen.SetText(lblDeterminantOfA, CStr(image.determinant));
    case SectionKind::kTrace:
      workspace.trace = image.trace;
      return context.screen.SetText(lblTraceOfA, CStr(image.trace));
    case SectionKind::kDefiniteness:
      workspace.definitenessText = image.definiteness;
      return context.screen.SetText(lblDefiniteness, image.definiteness);
    case SectionKind::kSymmetry:
      workspace.symmetryText = image.symmetry;
      return context.screen.SetText(lblSymmetry, image.symmetry);
    case SectionKind::kEigen:
      return ApplyEigen(context, image.eigen);
    case SectionKind::kSystem:
      return ApplySystem(context, std::move(image.system));
  }
}

}  // namespace

void ApplyMatrix(Context& context, int slot, MatrixSection section) {
  Store(context, slot, std::move(section));
  ShowDimensions(context, slot);
  MarkSlot(context, slot);
  Populate(context, slot);
}

void ApplySystem(Context& context, SystemSection section) {
  SelectSystemMethod(context, section.kind);
  Store(context, kSlotSystem, std::move(section.matrix));
  if (section.factors) ApplyFactors(context, std::move(*section.factors));
  ShowSystemDimensions(context, section.kind);
  MarkSystemAvailable(context);
  Populate(context, kSlotSystem);
}

void ApplyFactors(Context& context, StoredFactors factors) {
  StoredFactors& stored = context.workspace.storedFactors;
  if (factors.uRows == factors.uCols) {
    if (factors.uRows == 0) return;
    stored = std::move(factors);
    context.workspace.StoredFactorsValid = true;
    context.screen.SetEnabled(cmdSaveLU, true);
    return;
  }
  context.screen.ShowMessage({"ERROR: INCORRECT DIMENSIONALITY. U FACTOR IS NOT SQUARE."});
  stored.lRows = factors.lRows;
  stored.lCols = factors.lCols;
  stored.uRows = factors.uRows;
  stored.uCols = factors.uCols;
  stored.exchangeRows = factors.exchangeRows;
}

void ApplyProject(Context& context, ProjectImage image) {
  context.screen.SetEnabled(mnuPrint, true);
  context.screen.SetEnabled(cmdShowResults, true);
  SetFlags(context.workspace, image.flags);
  for (const ProjectSectionInfo& section : kProjectSections) {
    if (Holds(image.flags, section)) ApplySection(context, section, image);
  }
}

}  // namespace qmx
