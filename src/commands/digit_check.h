// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "proof/cell_proofs.h"
#include "proof/prover.h"
#include "workspace/computation.h"

namespace qmx {

/// One check of digits, which owns what it reads.
struct DigitCheck {
  Result result = kNoResult;
  std::shared_ptr<const Computation> of;
  ProofQuestion question;
  bool asked = false;  ///< The user asked for it: it may take as long as it takes.
};

/// What a check has found.
struct DigitFinding {
  /// It was not begun, because it would take longer than one that nobody asked for may take; or it
  /// was ended by its time.
  bool tooLong = false;
  ProofTask task = ProofTask::kSum;
  ProofOutcome outcome = ProofOutcome::kCannotBeProved;
  bool singular = false;
  std::optional<int> conditionExponent;
  VerdictProof verdict = VerdictProof::kNotProved;
  /// One for each matrix of the question. Eigenvectors have their eigenvalues as header.
  std::vector<std::shared_ptr<const CellProofs>> matrices;
};

/// Does a check, on any thread. Nothing where `stop` said so; it is asked every few milliseconds.
/// Throws nothing: what cannot be computed for lack of memory cannot be proved.
std::optional<DigitFinding> RunDigitCheck(const Prover& prover, const DigitCheck& check,
                                          const std::function<bool()>& stop);

}  // namespace qmx
