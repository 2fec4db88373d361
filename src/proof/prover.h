// SPDX-License-Identifier: MIT
#pragma once

#include "proof/proof.h"

namespace qmx {

/// Whoever proves digits, on any thread: EstimateProof and Prove as an object, so that a program
/// can do without, or a test take their place.
class Prover {
 public:
  Prover() = default;
  Prover(const Prover&) = delete;
  Prover& operator=(const Prover&) = delete;
  virtual ~Prover() = default;

  virtual ProofCost Estimate(const ProofQuestion& question) const = 0;
  virtual ProofAnswer Prove(const ProofQuestion& question, const ProofLimits& limits) const = 0;
};

/// The one that proves by ball arithmetic.
const Prover& BallProver();

}  // namespace qmx
