// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "algorithms/block_sizes.h"
#include "base/matrix.h"
#include "base/progress.h"

namespace qmx {

enum class Definiteness {
  kIndefinite,
  kPositiveDefinite,
  kNegativeDefinite,
  kSemidefinite,
  kPositiveSemidefinite,
  kNegativeSemidefinite,
};

/// What the definiteness test finds. Element k - 1 of the vectors belongs to the leading k x k
/// block.
struct DefinitenessReport {
  Definiteness verdict = Definiteness::kIndefinite;
  double overallSmallestPivot = 0;
  std::vector<double> smallestPivot;  ///< Smallest magnitude on the diagonal of the reduced block.
  std::vector<double> leadingMinor;   ///< Determinant of the block.
};

/// Classifies a symmetric n x n matrix, n >= 1, by the signs of its leading principal minors
/// (Sylvester's criterion). The minors come from a growing elimination: row k joins the reduced
/// block k - 1, and only it and the diagonal row compete for a pivot. An exactly zero pivot ends
/// the reduction of the new row for that k. Semidefiniteness is judged from the same minors. `A` is
/// used up as the work matrix.
DefinitenessReport TestDefiniteness(const Matrix& A, Progress& progress,
                                    const BlockSizes& sizes = kBlockSizes);

/// The class by the signs of the leading minors alone.
Definiteness ClassifyMinors(const std::vector<double>& leadingMinor);

}  // namespace qmx
