// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "algorithms/block_sizes.h"
#include "base/matrix.h"
#include "base/progress.h"

namespace qmx {

/// What steers the eigenvalue iteration and the inverse iteration.
struct EigenParameters {
  double tolerance = 0;        ///< Half of the error bound; every convergence test uses it.
  std::int32_t maxCycles = 0;  ///< Most cycles of the iteration; at least one is made.
  double shiftReference = 0;  ///< The active matrix is shifted once a diagonal change is no larger.
  double additionalShift = 0;  ///< Moves an eigenvalue off before its shifted matrix is factored.
};

/// What the iteration found, in the order found.
struct EigenvalueRun {
  int count = 0;  ///< Number K of eigenvalues found.
  std::vector<double>
      eigenvalues;  ///< N of them: K found, then the shifts added up for those not found.
  std::vector<double>
      origin;  ///< N of them: the diagonal position in A (from 1) of each one found, else 0.
};

/// Hears what the iteration does, for whoever tells of it.
class EigenvalueObserver {
 public:
  EigenvalueObserver() = default;
  EigenvalueObserver(const EigenvalueObserver&) = delete;
  EigenvalueObserver& operator=(const EigenvalueObserver&) = delete;
  virtual ~EigenvalueObserver() = default;

  /// A cycle has changed the active block: its diagonal now, and by how much each entry changed.
  virtual void OnCycle(std::span<const double> diagonal, std::span<const double> change) = 0;
  /// The diagonal entry that began at this position of A is taken for an eigenvalue.
  virtual void OnFound(int position, double eigenvalue) = 0;
  /// The active block is moved by the diagonal entry at this place of it.
  virtual void OnShift(int place, double shift) = 0;
};

/// The real eigenvalues of a square A of order N >= 1: reduction to Hessenberg form by Householder
/// reflections, then cycles of QR by Gram-Schmidt and the product R·Q with deflation of diagonal
/// entries that have settled, and shifts by the diagonal entry that moved least (Golub & Van Loan,
/// Matrix Computations, 7.4 and 7.5). Complex eigenvalues are left where they are until the cycle
/// limit ends the run. `shiftIndex` is the active position of the last shift and is carried from
/// run to run: it stays as it is in a cycle where the first diagonal entry moved strictly least; 0
/// then shifts by zero. A run that its progress stops leaves it. Faults: 9 for a 1 x 1 matrix whose
/// value settles, and where a carried index lies above the order of A; arithmetic faults of any
/// cycle. An observer changes nothing.
EigenvalueRun FindEigenvalues(const Matrix& A, const EigenParameters& parameters,
                              std::int32_t& shiftIndex, Progress& progress,
                              const BlockSizes& sizes = kBlockSizes,
                              EigenvalueObserver* observer = nullptr);

}  // namespace qmx
