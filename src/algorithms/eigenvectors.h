// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "algorithms/block_sizes.h"
#include "algorithms/eigenvalues.h"
#include "base/matrix.h"
#include "base/progress.h"

namespace qmx {

enum class VectorOutcome : int { kSingular = -1, kConverged = 0, kNotConverged = 1 };

/// A unit eigenvector of a square A of order N for the eigenvalue `lambda` found at diagonal
/// position `origin` (1..N), by inverse iteration (Golub & Van Loan, Matrix Computations, 7.6.1)
/// with A - mu·I, where mu is lambda moved by the additional shift away from A(origin, origin).
/// `vector` (N numbers) holds the start vector and receives the last iterate; where the shifted
/// matrix is exactly singular it stays as it is. At least one cycle is made. Convergence compares
/// magnitudes, so a change of sign does not count. Stopped by its progress it leaves the start
/// vector. Faults: arithmetic faults of any cycle.
VectorOutcome FindEigenvector(const Matrix& A, double lambda, int origin,
                              const EigenParameters& parameters, std::vector<double>& vector,
                              Progress& progress, const BlockSizes& sizes = kBlockSizes);

}  // namespace qmx
