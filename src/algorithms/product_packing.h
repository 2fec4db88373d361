// SPDX-License-Identifier: MIT
#pragma once

#include "algorithms/product_tiles.h"

namespace qmx {

/// The size of the even parts, each at most `most` and a multiple of `step` but for the last, that
/// `all` falls into.
int EvenPart(int all, int most, int step);

/// Copies a rows x depth block of A so that its elements lie in the order of their use: panels of
/// the tile height, in each panel column by column. The last panel may be lower.
void PackA(const Kernels& kernels, const ProductJob& job, double* out);

/// Copies a depth x cols block of B as panels of the tile width, in each panel row by row. The last
/// panel may be narrower.
void PackB(const ProductJob& job, int tileCols, double* out);

/// Where packed operands lie. Single panels of A lie where its blocks do.
struct PackedOperands {
  alignas(64) double a[kMostPackedA];
  alignas(64) double b[kMostPackedB];
};

/// Those of the running member of the team; null where there is no memory for them.
PackedOperands* Packed();

/// Whether there is memory for those of the first `members` members. To be called by the first one
/// while the others do nothing.
bool HavePacked(int members);

}  // namespace qmx
