// SPDX-License-Identifier: MIT
#pragma once

#include <random>

#include "workspace/workspace.h"

namespace qmx::test {

/// A Workspace that holds a small example of everything: all results, three eigenvalues of which
/// one has a vector, one did not converge and one was singular, and a system by stored factors.
Workspace EverythingWorkspace();

/// A Workspace as some run of the program may leave it: any combination of contents, shapes from
/// empty to rectangular, numbers of every magnitude.
Workspace RandomWorkspace(std::mt19937& random);

/// True if both hold the same numbers, flags and texts in what a project file holds, the sign of
/// zero and the components of eigenvectors that did not converge aside.
bool SameProject(const Workspace& one, const Workspace& two);

/// The flags of a project file in one line, for failure messages.
std::string FlagLine(const Workspace& workspace);

}  // namespace qmx::test
