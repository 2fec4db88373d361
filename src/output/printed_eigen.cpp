// SPDX-License-Identifier: MIT
#include "output/printed_eigen.h"

#include <array>
#include <span>

#include "workspace/known_eigenvalues.h"

namespace qmx {
namespace {

constexpr int kSecondColumn = 40;

constexpr std::array<std::string_view, 2> kSingularBox{
    "***ENCOUNTERED SINGULAR MATRIX. ***",
    "***REVIEW ADDITIONAL SHIFT.     ***",
};

constexpr std::array<std::string_view, 5> kUnconvergedBox{
    "***EIGENVECTOR DID NOT CONVERGE.***", "***REVIEW MAXIMUM ERROR.        ***",
    "***REVIEW MAXIMUM # OF CYCLES.  ***", "***REVIEW ADDITIONAL SHIFT.     ***",
    "***BEST RESULT WAS:             ***",
};

void Box(LineComposer& lines, std::span<const std::string_view> texts) {
  for (const std::string_view text : texts) lines.Tab(kSecondColumn).Line(text);
}

void Vector(LineComposer& lines, const Matrix& vectors, int t, double origin) {
  for (int i = 1; i <= vectors.Rows(); ++i) {
    lines.Tab(kSecondColumn);
    EigenvectorItems(lines, i, origin, vectors(i, t)).End();
  }
}

/// One eigenvalue and what belongs to it. What stands in the second column first stands beside the
/// eigenvalue.
void EigenvalueBlock(LineComposer& lines, const Workspace& workspace, int t) {
  const EigenState& eigen = workspace.eigen;
  const Matrix& vectors = workspace.At(kSlotEigenvectors).array;
  const double origin = eigen.EigenOrigin[t - 1];
  const double status = eigen.VectorStatus[t - 1];
  const bool singular = status == -1;
  const bool hasVector = !singular && t <= vectors.Cols() && vectors.Rows() > 0;
  lines.Add("EVL(").Add(origin).Add(")=").Add(workspace.At(kSlotEigenvalues).array(t, 1));
  if (singular) {
    Box(lines, kSingularBox);
  } else if (status != 0) {
    Box(lines, kUnconvergedBox);
  } else if (!hasVector) {
    lines.End();
  }
  if (hasVector) Vector(lines, vectors, t, origin);
  lines.EmptyLine();
}

}  // namespace

LineComposer& EigenvectorItems(LineComposer& lines, int i, double origin, double value) {
  return lines.Add("EVC(").Add(i).Add(",").Add(origin).Add(")=").Add(value);
}

void PrintEigenReport(LineComposer& lines, const Workspace& workspace, const EigenTexts& texts) {
  lines.Line("EIGENVALUES/EIGENVECTORS:");
  lines.EmptyLine();
  for (std::size_t i = 0; i < texts.size(); ++i)
    lines.Add(kEigenParameters[i].printed).Line(texts[i]);
  const int count = KnownEigenvalues(workspace);
  if (count == 0) return;
  lines.EmptyLine();
  lines.Line("EIGENVALUES FOUND AND THEIR CORRESPONDING UNIT EIGENVECTORS:");
  lines.EmptyLine();
  for (int t = 1; t <= count; ++t) EigenvalueBlock(lines, workspace, t);
}

}  // namespace qmx
