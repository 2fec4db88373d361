// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "files/eigen_section.h"
#include "files/matrix_file.h"
#include "files/system_file.h"
#include "workspace/field_table.h"
#include "workspace/result_table.h"

namespace qmx {

/// All that a project file holds, checked but not yet part of the Workspace.
struct ProjectImage {
  ResultFlags flags{};
  std::array<MatrixSection, kSlotCount> matrices;
  std::array<double, kResultCount> numbers{};      ///< Those that are numbers.
  std::array<std::string, kResultCount> verdicts;  ///< Those that are verdicts.
  EigenSection eigen;
  SystemSection system;
};

/// True if a file with these flags holds something of the result: the map of exchanges only stands
/// with the factors that it belongs to.
constexpr bool Holds(const ResultFlags& flags, Result result) {
  return flags[result] && (result != kResultExchanges || flags[kResultLU]);
}

/// True for the matrices that project files hold. The Permutation is made of the map of exchanges.
constexpr bool IsFiled(Slot slot) { return slot != kSlotPermutation; }

/// The bytes of a project file: three records of flags, then what the flags tell, in the order of
/// the results. Writes whatever the Workspace holds, also what a fault in the middle of a task has
/// left. `eigenTexts` are those of the eigen task's fields.
std::string ProjectFile(const Workspace& workspace, const EigenTexts& eigenTexts,
                        Progress& progress = NoProgress());

/// Reads a project file, to its end. Where the stored factors turn out to have a U that is not
/// square, nothing after their counts is read, and the flag of the Solution is cleared.
FileReading<ProjectImage> ReadProjectFile(std::string_view bytes,
                                          const Memory& memory = SystemMemory(),
                                          Progress& progress = NoProgress());

}  // namespace qmx
