// SPDX-License-Identifier: MIT
#include "output/printed_report.h"

#include <algorithm>

#include "output/line_composer.h"
#include "output/printed_eigen.h"
#include "workspace/result_table.h"

namespace qmx {
namespace {

constexpr std::string_view kRightHandSideHeading =
    "RIGHT-HAND SIDE OF SYSTEM SOLVED BY LU FACTORS:";

void ElementLine(LineComposer& lines, std::string_view prefix, int i, int j, double value) {
  lines.Add(prefix).Add(i).Add(",").Add(j).Add(")=").Add(value).End();
}

/// Which elements of a matrix are printed. A lower triangle has ones on its diagonal.
enum class Part { kAll, kUnitLower, kUpper };

void Rows(LineComposer& lines, Slot slot, const Matrix& values, Part part) {
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

void PrintSection(LineComposer& lines, const Workspace& workspace, Slot slot) {
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
      if (byFactors) return VectorRows(lines, values, "R.H.S.(", ", 1 )=");
      return Rows(lines, slot, values, Part::kAll);
    default:
      return Rows(lines, slot, values, Part::kAll);
  }
}

void PrintMatrices(LineComposer& lines, const Workspace& workspace, const ResultInfo& info) {
  switch (info.result) {
    case kResultExchanges:
      if (workspace.LUComputed) PrintSection(lines, workspace, kSlotExchanges);
      return;
    case kResultAdjoint:
      return;
    case kResultTranspose:
      // The report pairs the Adjoint with the Transpose; the Transpose is printed on its own only.
      return PrintSection(lines, workspace, kSlotAdjoint);
    default:
      ForEachSlot(info, [&](Slot slot) { PrintSection(lines, workspace, slot); });
  }
}

void PrintResult(LineComposer& lines, const Workspace& workspace, const ResultInfo& info,
                 const EigenTexts& eigenTexts) {
  switch (info.kind) {
    case ResultKind::kNumber:
      return lines.Add(info.printed).Add(workspace.*info.number).End();
    case ResultKind::kVerdict:
      lines.Add(info.printed).Line(workspace.*info.verdict);
      if (info.result == kResultSymmetry) lines.EmptyLine();
      return;
    case ResultKind::kEigenvalues:
      return PrintEigenReport(lines, workspace, eigenTexts);
    case ResultKind::kEigenvectors:
      return;  // They are printed beside the eigenvalues.
    case ResultKind::kMatrices:
    case ResultKind::kSystem:
      return PrintMatrices(lines, workspace, info);
  }
}

}  // namespace

std::vector<std::string> PrintedMatrix(const Workspace& workspace, Slot slot) {
  LineComposer lines;
  PrintSection(lines, workspace, slot);
  return lines.Take();
}

std::vector<std::string> PrintedReport(const Workspace& workspace, const EigenTexts& eigenTexts) {
  LineComposer lines;
  for (const ResultInfo& info : kResults) {
    if (workspace.*info.flag) PrintResult(lines, workspace, info, eigenTexts);
  }
  return lines.Take();
}

}  // namespace qmx
