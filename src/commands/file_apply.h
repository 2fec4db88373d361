// SPDX-License-Identifier: MIT
#pragma once

#include "files/project_file.h"
#include "workspace/context.h"

namespace qmx {

// What was read from a file becomes part of the Workspace and of the windows. Nothing here can be
// refused: the readers have checked it all.

/// A matrix takes its slot; its dimensions, availability and grid follow.
void ApplyMatrix(Context& context, Slot slot, MatrixSection section);

/// The System takes its slot, the way of solving follows its kind, and the factors that came with
/// it are stored.
void ApplySystem(Context& context, SystemSection section);

/// Keeps factors for solving systems. Where U is not square, the user is told so and only the
/// counts are kept; factors of order 0 stand for none and change nothing.
void ApplyFactors(Context& context, StoredFactors factors);

/// All flags and all sections of a project, in the order of the file. What the project does not
/// hold keeps its place, though its flag is cleared.
void ApplyProject(Context& context, ProjectImage image);

}  // namespace qmx
