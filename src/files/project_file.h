#pragma once

#include <array>
#include <string>
#include <string_view>

#include "files/eigen_section.h"
#include "files/matrix_file.h"
#include "files/project_layout.h"
#include "files/system_file.h"

namespace qmx {

/// All that a project file holds, checked but not yet part of the Workspace.
struct ProjectImage {
  ProjectFlags flags{};
  std::array<MatrixSection, kSlotCount> matrices;
  double determinant = 0;
  double trace = 0;
  std::string definiteness;
  std::string symmetry;
  EigenSection eigen;
  SystemSection system;
};

/// The bytes of a project file: three records of flags, then the sections whose flags are set, in
/// the order of kProjectSections. Writes whatever the Workspace holds, also what a fault in the
/// middle of a task has left.
std::string ProjectFile(const Workspace& workspace, const Screen& screen);

/// Reads a project file, to its end. Where the stored factors turn out to have a U that is not
/// square, nothing after their counts is read, and the flag of the Solution is cleared.
FileReading<ProjectImage> ReadProjectFile(std::string_view bytes);

}  // namespace qmx
