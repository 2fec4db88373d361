// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>

#include "workspace/workspace.h"

namespace qmx {

/// The number of eigenvalues whose value, position and vector status are all there. A fault in the
/// middle of a run leaves some of them from the run before.
inline int KnownEigenvalues(const Workspace& workspace) {
  const EigenState& eigen = workspace.eigen;
  return std::min({eigen.EigenCount, workspace.At(kSlotEigenvalues).array.Rows(),
                   static_cast<int>(eigen.EigenOrigin.size()),
                   static_cast<int>(eigen.VectorStatus.size())});
}

}  // namespace qmx
