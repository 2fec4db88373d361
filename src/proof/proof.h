// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "algorithms/definiteness.h"
#include "base/matrix.h"
#include "proof/held_digits.h"
#include "proof/watch.h"

// How many digits of a result hold: proved, by enclosing the exact answer to the task in ball
// arithmetic and comparing it with what was computed. The operands are taken as the doubles that
// they are. Everything a caller needs is here, in held_digits.h (digits of a shown text) and in
// watch.h (limits):
//
//   ProofQuestion question{ProofTask::kInverse, A};
//   question.computed = {inverse};
//   const ProofCost cost = EstimateProof(question);             // before it begins
//   const ProofAnswer answer = Prove(question, limits);          // on any thread
//   HeldDigits(text, kNarrowDigits, inverse(i, j), answer.results[0].At(i, j));
//
// Nothing here knows a window or a Workspace, and nothing raises a message. A check may run on any
// thread, several on several threads at once; it releases what the libraries keep for its thread
// when it ends. It leaves the arithmetic flags of its thread as they were.

namespace qmx {

/// What is to be proved. The comments tell the operands (of ProofQuestion) and what `computed`
/// holds, in its order. A scalar is a 1 x 1 matrix.
enum class ProofTask {
  kSum,          ///< a, b; {A + B}
  kDifference,   ///< a, b; {A - B}
  kProduct,      ///< a, b; {A·B}
  kTranspose,    ///< a; {transpose of A}
  kScaled,       ///< a (as it was), scalar; {scalar·A}
  kShifted,      ///< a (as it was), scalar; {A + scalar·I on the leading diagonal}
  kTrace,        ///< a; {trace}
  kDeterminant,  ///< a; {determinant}
  kInverse,      ///< a; {inverse}
  kAdjoint,      ///< a; {adjoint}: by cofactors and by the inverse, there is only one.
  /// a, exchanges (m x 1: element k is the row of A that became row k; empty: none); {L, U}. The
  /// exact factors for that order of the rows. A column that is zero at and below its diagonal is
  /// skipped, as in FactorLu.
  kLu,
  kQr,  ///< a (m x n, m >= n); {Q, R} with a positive diagonal of R.
  /// a; {eigenvalues (K x 1), eigenvectors (n x K or empty)}. A value is compared with a real
  /// eigenvalue of A close to it (of several close ones not always with the closest), its vector
  /// with the unit eigenvector of the same, up to the sign, where it is a simple one.
  kEigen,
  kSolution,  ///< a = the System (n rows; columns 1..n and the last one); {solution (n x 1)}
  /// a = L, b = U, exchanges, system (n rows, its column 1); {solution}: of L·U·x = P·b with L and
  /// U as they are. The diagonal of L and what lies beyond the triangles is not read.
  kSolutionByFactors,
  kLeastSquares,  ///< a = the System (m rows, k + 1 columns); {solution (k x 1)}
  kSymmetry,      ///< a, symmetric; no digits, see `verdict`.
  kDefiniteness,  ///< a, definiteness; no digits, see `verdict`.
};

struct ProofQuestion {
  ProofTask task = ProofTask::kSum;
  Matrix a;
  Matrix b;
  Matrix exchanges;
  Matrix system;
  double scalar = 0;
  std::vector<Matrix> computed;
  bool symmetric = false;
  Definiteness definiteness = Definiteness::kIndefinite;
};

enum class ProofOutcome {
  kProved,  ///< Every exact number is enclosed far more narrowly than doubles lie.
  /// Some are, and others are not, because a limit was reached or there is nothing to compare them
  /// with. What is known of each element stands in its proof; nothing known means no digits.
  kPartlyProved,
  kNoExactAnswer,   ///< There is none: see `singular`. No digit holds.
  kCannotBeProved,  ///< The limits did not suffice to enclose anything, or a number is not finite.
  kStopped,         ///< The stop callback said so.
  kDoesNotFit,      ///< The operands and the result do not belong together by their shapes.
};

/// The least number of digits in a matrix, and the first element (from 1) that has so few. A matrix
/// without elements has `most` digits at 0, 0.
struct FewestDigits {
  int digits = 0;
  int row = 0;
  int col = 0;
};

/// What is known about the elements of one computed matrix.
struct ResultProof {
  int rows = 0;
  int cols = 0;
  std::vector<ElementProof> elements;  ///< Row by row.
  /// Of the texts that wide grids (CStr) and narrow grids (CStrSingle) show.
  FewestDigits wide;
  FewestDigits narrow;

  /// Element (row, col), from 1.
  const ElementProof& At(int row, int col) const {
    return elements[static_cast<std::size_t>(row - 1) * cols + (col - 1)];
  }
  ElementProof& At(int row, int col) {
    return elements[static_cast<std::size_t>(row - 1) * cols + (col - 1)];
  }
};

/// Whether a verdict is right.
enum class VerdictProof { kProved, kDisproved, kNotProved };

struct ProofAnswer {
  ProofOutcome outcome = ProofOutcome::kCannotBeProved;
  /// As many as were computed, and of their shapes, whatever the outcome.
  std::vector<ResultProof> results;
  /// Proved: A is singular (kDeterminant, kInverse, kAdjoint, kSolution, U for kSolutionByFactors);
  /// a leading block of the reordered A is (kLu: the factors end there); a column of A depends on
  /// the columns before it (kQr: Q and R end there; kLeastSquares: no unique solution).
  bool singular = false;
  /// The power of ten nearest to the condition number ||A||·||A^-1|| in the 1-norm (kLeastSquares:
  /// the root of that of the normal equations). For kInverse, kSolution and kLeastSquares where A
  /// is regular. An order of magnitude, not proved.
  std::optional<int> conditionExponent;
  /// kSymmetry: A is symmetric or is not, as said. kDefiniteness: the words are true of A - for
  /// "positive semidefinite" and its kin that includes being singular. kDisproved tells that they
  /// are not, which the rule of leading minors does not see.
  VerdictProof verdict = VerdictProof::kNotProved;
};

/// What a check is expected to take.
struct ProofCost {
  double seconds = 0;
  double bytes = 0;
};

/// A check is not begun by itself where it is expected to take longer.
inline constexpr double kUnaskedSeconds = 5;

/// Estimates time and memory by the sizes and the bits of the operands; takes no longer than
/// reading them. The time is right within a factor of three or so for a regular matrix; a singular
/// one is found out only on the way, and the limits end what takes too long.
ProofCost EstimateProof(const ProofQuestion& question);

/// Proves what can be proved within the limits. Throws what the stop callback throws, nothing else.
ProofAnswer Prove(const ProofQuestion& question, const ProofLimits& limits);

}  // namespace qmx
