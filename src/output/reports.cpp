// SPDX-License-Identifier: MIT
#include "output/reports.h"

#include "base/number_text.h"

namespace qmx {
namespace {

constexpr int kRuleLength = 80;
constexpr std::size_t kPivotColumnWidth = 30;

std::string PadRight(std::string text, std::size_t width) {
  if (text.size() < width) text.resize(width, ' ');
  return text;
}

}  // namespace

std::string ClosingLine() {
  std::string line;
  for (int i = 0; i < kRuleLength; ++i) line += "\u2014";
  return line;
}

std::string DefinitenessText(Definiteness verdict) {
  switch (verdict) {
    case Definiteness::kIndefinite:
      return "Indefinite";
    case Definiteness::kPositiveDefinite:
      return "Positive definite";
    case Definiteness::kNegativeDefinite:
      return "Negative definite";
    case Definiteness::kSemidefinite:
      return "Semidefinite";
    case Definiteness::kPositiveSemidefinite:
      return "Positive Semidefinite";
    case Definiteness::kNegativeSemidefinite:
      return "Negative Semidefinite";
  }
  return {};
}

std::string SmallestPivotLine(double overallSmallestPivot) {
  return "SMALLEST (OVERALL) PIVOT (ABS. VALUE)=" + CStr(overallSmallestPivot);
}

Lines DefinitenessTable(const DefinitenessReport& report) {
  Lines lines{"SMALLEST PIVOTS (ABS.VAL.):   DETERMINANTS:"};
  for (std::size_t k = 0; k < report.smallestPivot.size(); ++k) {
    lines.push_back(PadRight(CStr(report.smallestPivot[k]), kPivotColumnWidth) +
                    CStr(report.leadingMinor[k]));
  }
  lines.push_back(ClosingLine());
  return lines;
}

Lines UnsolvedSystemReport(bool inconsistent) {
  if (inconsistent) return {"ERROR:", "THE SYSTEM IS INCONSISTENT.", ClosingLine()};
  return {"ERROR:", "AT LEAST ONE EQUATION IS LINEARLY DEPENDENT",
          "SO THE SYSTEM HAS INFINITELY MANY SOLUTIONS.", ClosingLine()};
}

Lines UnsolvedNormalEquationsReport(bool inconsistent) {
  return {
      "ERROR:", inconsistent ? "YIELDS INCONSISTENT SYSTEM." : "YIELDS LINEARLY DEPENDENT SYSTEM.",
      ClosingLine()};
}

std::string EigenvalueLine(double origin, double value) {
  return "EVL(" + CStr(origin) + ")=" + CStr(value);
}

Lines EigenvalueReport(const std::vector<double>& origin, const std::vector<double>& values,
                       int count) {
  Lines lines{"REAL EIGENVALUES FOUND:"};
  for (int t = 0; t < count; ++t) lines.push_back(EigenvalueLine(origin[t], values[t]));
  lines.emplace_back();
  return lines;
}

Lines NoEigenvaluesReport() {
  return {"NO EIGENVALUES FOUND.  THE REASON MAY BE ONE OF:",
          "",
          " - MATRIX HAS NO REAL EIGENVALUES",
          " - SPECIFIED ERROR TOO SMALL",
          " - SPECIFIED MAXIMUM # OF CYCLES TOO FEW",
          " - ALGORITHM BREAKDOWN: SOME MATRICES DON'T YIELD TO THE",
          "   PROCESS IN THEIR ORIGINAL FORM.  THIS GENERALLY MAY",
          "   BE REMEDIED BY INTRODUCING AN ARBITRARY SHIFT.",
          ClosingLine()};
}

std::string EigenvectorHeading() { return "UNIT EIGENVECTORS:"; }

Lines ConvergedVectorReport(double origin, double value, const std::vector<double>& vector) {
  Lines lines{EigenvalueLine(origin, value)};
  int i = 0;
  for (const double component : vector) {
    lines.push_back("          EVC(" + CStr(++i) + "," + CStr(origin) + ")=" + CStr(component));
  }
  return lines;
}

Lines UnconvergedVectorReport(double origin, double value, std::int32_t maxCycles) {
  return {EigenvalueLine(origin, value), "***NO CONVERGENCE IN" + CStr(maxCycles) + " & CYCLES***"};
}

Lines SingularVectorReport(double origin, double value) {
  return {"", EigenvalueLine(origin, value) + "  YIELDS SINGULAR MATRIX."};
}

}  // namespace qmx
