// SPDX-License-Identifier: MIT
#include "proof/prover.h"

namespace qmx {
namespace {

class Balls final : public Prover {
 public:
  ProofCost Estimate(const ProofQuestion& question) const override {
    return EstimateProof(question);
  }
  ProofAnswer Prove(const ProofQuestion& question, const ProofLimits& limits) const override {
    return qmx::Prove(question, limits);
  }
};

}  // namespace

const Prover& BallProver() {
  static const Balls balls;
  return balls;
}

}  // namespace qmx
