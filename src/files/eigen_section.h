// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <vector>

#include "files/matrix_file.h"
#include "workspace/field_table.h"
#include "workspace/workspace.h"

namespace qmx {

/// What a project file holds of an eigen run.
struct EigenSection {
  std::array<double, kEigenParameters.size()> parameters{};
  std::vector<double> values;  ///< One per eigenvalue found, as are the next two.
  std::vector<double> status;
  std::vector<double> origin;
  int vectorCount = 0;  ///< Number of eigenvectors found.
  int rows = 0;         ///< Order of the eigenvectors; 0 where none were found.
  Matrix converged;     ///< The eigenvectors with status 0, side by side.

  int Count() const { return static_cast<int>(values.size()); }
  /// The eigenvectors in a column for each eigenvalue; those that did not converge are zero.
  Matrix Vectors() const;
};

/// The numbers that the texts of the four fields begin with and the number n of eigenvalues found.
/// If n is not 0: the counts of Eigenvalues; for each eigenvalue its value, status and origin; a
/// print record with the number m of eigenvectors found. If m is not 0: the counts of Eigenvectors
/// and their elements row by row, without the columns whose status is not 0.
void WriteEigenSection(RecordWriter& writer, const Workspace& workspace, const EigenTexts& texts);
bool ReadEigenSection(FieldScanner& scanner, EigenSection& section);

}  // namespace qmx
