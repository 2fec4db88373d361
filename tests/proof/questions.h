// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

#include "proof/proof.h"
#include "support/core_cases.h"

namespace qmx::testing {

/// Deals out questions about results that the program's own algorithms computed, from matrices of
/// all kinds up to an order: those of CaseSource, Vandermonde matrices, graded ones.
class QuestionSource {
 public:
  QuestionSource(ProofTask task, std::uint64_t seed, int largest);

  /// The next question; nothing where the algorithm refused, or met a fault.
  std::optional<ProofQuestion> Next();
  Dice& Randomness() { return cases_.Randomness(); }

 private:
  Matrix NextMatrix(int rows, int cols);
  bool Compute(ProofQuestion& question);
  bool ComputeSystem(ProofQuestion& question);

  ProofTask task_;
  int largest_;
  CaseSource cases_;
  int dealt_ = 0;
};

/// Every task that tells digits.
inline constexpr ProofTask kDigitTasks[] = {
    ProofTask::kSum,          ProofTask::kDifference,  ProofTask::kProduct,
    ProofTask::kTranspose,    ProofTask::kScaled,      ProofTask::kShifted,
    ProofTask::kTrace,        ProofTask::kDeterminant, ProofTask::kInverse,
    ProofTask::kAdjoint,      ProofTask::kLu,          ProofTask::kQr,
    ProofTask::kEigen,        ProofTask::kSolution,    ProofTask::kSolutionByFactors,
    ProofTask::kLeastSquares,
};

std::string NameOf(ProofTask task);

/// A question from its parts.
ProofQuestion Ask(ProofTask task, Matrix A, std::vector<Matrix> computed);

/// A scalar result.
Matrix Scalar(double value);

}  // namespace qmx::testing
