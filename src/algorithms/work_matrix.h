// SPDX-License-Identifier: MIT
#pragma once

#include "algorithms/block_sizes.h"
#include "base/matrix.h"

namespace qmx {

// The matrices that algorithms work in may have some columns behind those that count. Rows that lie
// a multiple of a page apart compete for the same few places of every cache: going down a column
// would find nothing there that an earlier column has brought.

/// The columns that a work matrix of so many columns should have.
inline int WorkColumns(int cols, const WorkSizes& sizes) {
  return cols > 0 && cols % sizes.competing == 0 ? cols + sizes.gap : cols;
}

/// A in the leading columns of a work matrix; whatever is in those behind. The members of the team
/// share the copying of large ones.
Matrix WorkCopy(const Matrix& A, const WorkSizes& sizes);

}  // namespace qmx
