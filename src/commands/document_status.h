// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "workspace/workspace.h"

namespace qmx {

/// What the status bar tells of the project's file, and at more length its tool tip.
struct DocumentStatus {
  std::string text;
  std::string toolTip;
};

/// The name of the project's file and whether anything has changed since it was saved. Where
/// another file has become the current one, the name that Save will write; where there is nothing
/// yet, how to begin. `changed` tells whether steps lead from what was saved to the present state.
DocumentStatus StatusOf(const Workspace& workspace, bool changed);

}  // namespace qmx
