// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "algorithms/eigenvalues.h"
#include "base/matrix.h"
#include "derivation/document.h"

// What is to be derived, and who does it. Everything here is free of the libraries that the
// derivations need.

namespace qmx {

/// The comments tell the operands. `element` means the element (row, col) of the result that the
/// derivation is about; 0, 0 for all of them, as far as there is room.
enum class DerivationTask {
  kSum,           ///< a, b; element
  kDifference,    ///< a, b; element
  kProduct,       ///< a, b; element: row times column
  kTranspose,     ///< a
  kTrace,         ///< a
  kSymmetry,      ///< a
  kDeterminant,   ///< a
  kInverse,       ///< a
  kAdjoint,       ///< a; byCofactors or by the inverse; element: the cofactor
  kLu,            ///< a, pivoting
  kQr,            ///< a
  kDefiniteness,  ///< a: the leading minors
  /// a, eigen: the characteristic polynomial, its factors, the iteration's cycles.
  kEigenvalues,
  kEigenvectors,       ///< The same, and the eigenvectors of what was found.
  kSolution,           ///< a = the System (n rows, n + 1 columns)
  kSolutionByFactors,  ///< a = L, b = U, exchanges, system
  kLeastSquares,       ///< a = the System (m rows, k + 1 columns)
};

/// Operands as they were when the result was computed. Matrices share their elements.
struct DerivationQuestion {
  DerivationTask task = DerivationTask::kSum;
  Matrix a;
  Matrix b;
  Matrix exchanges;
  Matrix system;
  bool pivoting = true;
  bool byCofactors = true;
  EigenParameters eigen;
  std::int32_t shiftIndex = 0;  ///< As it was carried into the iteration.
  int row = 0;
  int col = 0;
};

/// Called every few milliseconds; throws what ends the derivation.
using DerivationLook = std::function<void()>;

/// Whoever derives, on any thread: an object, so that a program can do without where a system lacks
/// the libraries, or a test take its place.
class Deriver {
 public:
  Deriver() = default;
  Deriver(const Deriver&) = delete;
  Deriver& operator=(const Deriver&) = delete;
  virtual ~Deriver() = default;

  /// How the result came about. Where the algorithm ends early (a pivot of zero), the derivation
  /// ends there and says so. Throws what `look` throws and std::bad_alloc, nothing else.
  virtual Document Derive(const DerivationQuestion& question, const DerivationLook& look) const = 0;
  /// Rank, reduced row echelon form, null space, condition number and all eigenvalues of A, each
  /// with its steps.
  virtual Document MoreAbout(const Matrix& a, const DerivationLook& look) const = 0;
  /// The exact elements of the result's matrices, in their order, row by row, for a grid that shows
  /// fractions: known where they are rational and numerator and denominator have at most 9 digits.
  /// Empty where the task has no such result or is too large to be done exactly in a second or so.
  virtual std::vector<std::vector<ExactNumber>> ExactElements(const DerivationQuestion& question,
                                                              const DerivationLook& look) const = 0;
};

/// The one that derives with exact fractions. Lives in the library of this folder.
const Deriver& ExactDeriver();

}  // namespace qmx
