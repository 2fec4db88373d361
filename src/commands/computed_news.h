// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "workspace/workspace.h"

namespace qmx {

/// What the command that ran last has computed, for people who do not see it open: "Inverse of A
/// computed, 4 by 4", "Determinant of A: 2". Empty where it has computed nothing.
std::string ComputedNews(const Workspace& workspace);

}  // namespace qmx
