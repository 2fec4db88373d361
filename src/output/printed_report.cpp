#include "output/printed_report.h"

#include <algorithm>

#include "output/line_composer.h"
#include "output/printed_eigen.h"
#include "workspace/slot_table.h"
#include "workspace/system_kind.h"

namespace qmx {
namespace {

constexpr std::string_view kRightHandSideHeading =
    "RIGHT-HAND SIDE OF SYSTEM SOLVED BY LU FACTORS:";

void ElementLine(LineComposer& lines, std::string_view prefix, int i, int j, double value) {
  lines.Add(prefix).Add(i).Add(",").Add(j).Add(")=").Add(value).End();
}

/// Which elements of a matrix are printed. A lower triangle has ones on its diagonal.
enum class Part { kAll, kUnitLower, kUpper };

void Rows(LineComposer& lines, int slot, const Matrix& values, Part part) {
  for (int i = 1; i <= values.Rows(); ++i) {
    const int first = part == Part::kUpper ? i : 1;
    const int last = part == Part::kUnitLower ? std::min(i - 1, values.Cols()) : values.Cols();
    for (int j = first; j <= last; ++j) ElementLine(lines, InfoOf(slot).prefix, i, j, values(i, j));
    if (part == Part::kUnitLower)
      lines.Add(InfoOf(slot).prefix).Add(i).Add(",").Add(i).Add(")= 1").End();
    lines.EmptyLine();
  }
}

/// The elements of a vector, one to a row: with an index behind a prefix, or alone on their lines.
void VectorRows(LineComposer& lines, const Matrix& values, std::string_view prefix,
                std::string_view afterIndex) {
  for (int i = 1; i <= values.Rows() && values.Cols() > 0; ++i) {
    if (!prefix.empty()) lines.Add(prefix).Add(i).Add(afterIndex);
    lines.Add(values(i, 1)).End();
    lines.EmptyLine();
  }
}

void Eigenvectors(LineComposer& lines, const Workspace& workspace) {
  const Matrix& vectors = workspace.At(kSlotEigenvectors).array;
  const std::vector<double>& origin = workspace.eigen.EigenOrigin;
  const int count = std::min(vectors.Cols(), static_cast<int>(origin.size()));
  for (int j = 1; j <= count; ++j) {
    for (int i = 1; i <= vectors.Rows(); ++i)
      EigenvectorItems(lines, i, origin[j - 1], vectors(i, j)).End();
    lines.EmptyLine();
  }
}

void PrintSection(LineComposer& lines, const Workspace& workspace, int slot) {
  const SlotInfo& info = InfoOf(slot);
  const Matrix& values = workspace.At(slot).array;
  const bool byFactors = slot == kSlotSystem && workspace.SystemMethod == kSystemByFactors;
  lines.Line(byFactors ? kRightHandSideHeading : info.heading);
  switch (slot) {
    case kSlotL:
      return Rows(lines, slot, values, Part::kUnitLower);
    case kSlotU:
      return Rows(lines, slot, values, Part::kUpper);
    case kSlotTranspose:
      lines.EmptyLine();
      return Rows(lines, slot, values, Part::kAll);
    case kSlotEigenvectors:
      lines.EmptyLine();
      return Eigenvectors(lines, workspace);
    case kSlotEigenvalues:
    case kSlotExchanges:
    case kSlotSolution:
      return VectorRows(lines, values, info.prefix, ")=");
    case kSlotSystem:
      if (byFactors) return VectorRows(lines, values, "R.H.S.(", ",1)=");
      return Rows(lines, slot, values, Part::kAll);
    default:
      return Rows(lines, slot, values, Part::kAll);
  }
}

void PrintSections(LineComposer& lines, const Workspace& workspace, bool wanted,
                   std::initializer_list<int> slots) {
  if (!wanted) return;
  for (const int slot : slots) PrintSection(lines, workspace, slot);
}

void PrintScalars(LineComposer& lines, const Workspace& workspace) {
  if (workspace.DeterminantComputed)
    lines.Add("Determinant of A=").Add(workspace.determinant).End();
  if (workspace.TraceComputed) lines.Add("Trace of A=").Add(workspace.trace).End();
  if (workspace.DefinitenessComputed)
    lines.Add("Definiteness of A:").Add(workspace.definitenessText).End();
  if (workspace.SymmetryComputed) {
    lines.Add("Symmetric:").Add(workspace.symmetryText).End();
    lines.EmptyLine();
  }
}

}  // namespace

void PrintMatrixSection(Printer& printer, const Workspace& workspace, int slot) {
  LineComposer lines(printer);
  PrintSection(lines, workspace, slot);
}

void PrintFullReport(Printer& printer, const Workspace& workspace, const Screen& screen) {
  LineComposer lines(printer);
  const auto present = [&](int slot) { return workspace.At(slot).present; };
  PrintSections(lines, workspace, workspace.ACreated, {kSlotA});
  PrintScalars(lines, workspace);
  PrintSections(lines, workspace, workspace.BCreated, {kSlotB});
  PrintSections(lines, workspace, workspace.SumComputed, {kSlotSum});
  PrintSections(lines, workspace, workspace.DifferenceComputed, {kSlotDifference});
  PrintSections(lines, workspace, workspace.ProductComputed, {kSlotProduct});
  PrintSections(lines, workspace, workspace.LUComputed, {kSlotL, kSlotU});
  PrintSections(lines, workspace, workspace.LUComputed && present(kSlotExchanges),
                {kSlotExchanges});
  PrintSections(lines, workspace, workspace.QRComputed, {kSlotQ, kSlotR});
  PrintSections(lines, workspace, workspace.InverseComputed, {kSlotInverse});
  // The report pairs the Adjoint with the Transpose; the Transpose is printed on its own only.
  PrintSections(lines, workspace, workspace.TransposeComputed, {kSlotAdjoint});
  if (workspace.EigenvaluesComputed) PrintEigenReport(lines, workspace, screen);
  PrintSections(lines, workspace, present(kSlotCreated), {kSlotCreated});
  PrintSections(lines, workspace, present(kSlotSystem), {kSlotSystem});
  PrintSections(lines, workspace, workspace.SolutionComputed, {kSlotSolution});
}

}  // namespace qmx
