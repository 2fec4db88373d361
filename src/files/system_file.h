// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "files/lu_file.h"
#include "files/matrix_file.h"
#include "workspace/system_kind.h"
#include "workspace/workspace.h"

namespace qmx {

/// The System as a file holds it.
struct SystemSection {
  MatrixSection matrix;
  int kind = 0;                          ///< The index of the way of solving, 0 to 2.
  std::optional<StoredFactors> factors;  ///< Only for kSystemByFactors.

  /// True if the file was read only up to the counts of factors whose U is not square.
  bool StopsAtFactors() const { return factors && factors->uRows != factors->uCols; }
};

/// The matrix section of the System, a print record with the kind and, where stored factors solve
/// it, the factors. Without stored factors their five counts are 0.
void WriteSystemSection(RecordWriter& writer, const Workspace& workspace);
bool ReadSystemSection(FieldScanner& scanner, SystemSection& section);

/// About how many numbers the section holds.
std::size_t SystemSectionSize(const Workspace& workspace);

std::string SystemFile(const Workspace& workspace, Progress& progress = NoProgress());
FileReading<SystemSection> ReadSystemFile(std::string_view bytes,
                                          const Memory& memory = SystemMemory(),
                                          Progress& progress = NoProgress());

/// Reads a file into an operand: a matrix file or, as copying the System would give it, the
/// augmented matrix of a system file. The problem of any other file is that of a matrix file.
FileReading<Matrix> ReadOperandFile(Slot operand, std::string_view bytes,
                                    const Memory& memory = SystemMemory(),
                                    Progress& progress = NoProgress());

}  // namespace qmx
