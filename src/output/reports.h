// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "algorithms/definiteness.h"

namespace qmx {

// The texts that tasks write into the results list, one element a line.

using Lines = std::vector<std::string>;

/// The line that ends every report: 80 em dashes.
std::string ClosingLine();

/// "Positive definite" and so on: the caption of the verdict.
std::string DefinitenessText(Definiteness verdict);

/// The first line of the definiteness report, which names the overall smallest pivot.
std::string SmallestPivotLine(double overallSmallestPivot);
/// The rest of it: a table of pivots and leading minors, and the closing line.
Lines DefinitenessTable(const DefinitenessReport& report);

/// What is reported of a System that could not be solved in one shot or by stored factors.
Lines UnsolvedSystemReport(bool inconsistent);
/// The same for normal equations.
Lines UnsolvedNormalEquationsReport(bool inconsistent);

/// "EVL(2)=3": an eigenvalue labelled with the diagonal position where it was found.
std::string EigenvalueLine(double origin, double value);
/// The eigenvalues found, with their heading and the empty line after them.
Lines EigenvalueReport(const std::vector<double>& origin, const std::vector<double>& values,
                       int count);
/// What is reported where no eigenvalue was found.
Lines NoEigenvaluesReport();

/// The heading of the eigenvectors.
std::string EigenvectorHeading();
/// What is reported of one eigenvalue's vector by how it ended.
Lines ConvergedVectorReport(double origin, double value, const std::vector<double>& vector);
Lines UnconvergedVectorReport(double origin, double value, std::int32_t maxCycles);
Lines SingularVectorReport(double origin, double value);

}  // namespace qmx
