// SPDX-License-Identifier: MIT
#include "proof/proof.h"

#include <algorithm>
#include <cmath>

#include "base/arithmetic.h"
#include "base/number_text.h"
#include "proof/families.h"
#include "proof/library_caches.h"
#include "proof/shapes.h"

namespace qmx {
namespace {

void Dispatch(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer) {
  switch (question.task) {
    case ProofTask::kSum:
    case ProofTask::kDifference:
    case ProofTask::kTranspose:
    case ProofTask::kScaled:
    case ProofTask::kShifted:
    case ProofTask::kTrace:
      return ProveElementary(question, watch, answer);
    case ProofTask::kProduct:
      return ProveProduct(question, watch, answer);
    case ProofTask::kDeterminant:
      return ProveDeterminant(question, watch, answer);
    case ProofTask::kInverse:
      return ProveInverse(question, watch, answer);
    case ProofTask::kAdjoint:
      return ProveAdjoint(question, watch, answer);
    case ProofTask::kLu:
      return ProveLu(question, watch, answer);
    case ProofTask::kQr:
      return ProveQr(question, watch, answer);
    case ProofTask::kEigen:
      return ProveEigen(question, watch, answer);
    case ProofTask::kSolution:
      return ProveSolution(question, watch, answer);
    case ProofTask::kSolutionByFactors:
      return ProveSolutionByFactors(question, watch, answer);
    case ProofTask::kLeastSquares:
      return ProveLeastSquares(question, watch, answer);
    case ProofTask::kSymmetry:
      return ProveSymmetry(question, watch, answer);
    case ProofTask::kDefiniteness:
      return ProveDefiniteness(question, watch, answer);
  }
}

bool IsFinite(const Matrix& A) {
  return std::all_of(A.Data(), A.Data() + A.Size(), [](double x) { return std::isfinite(x); });
}

bool AllAreFinite(const ProofQuestion& question) {
  return IsFinite(question.a) && IsFinite(question.b) && IsFinite(question.system) &&
         std::isfinite(question.scalar) &&
         std::all_of(question.computed.begin(), question.computed.end(), IsFinite);
}

void Note(FewestDigits& fewest, int digits, int row, int col) {
  if (fewest.row == 0 || digits < fewest.digits) fewest = {digits, row, col};
}

void FindFewest(const Matrix& computed, const ProofLimits& limits, ResultProof& result) {
  result.wide.digits = kWideDigits;
  result.narrow.digits = kNarrowDigits;
  for (int i = 1; i <= computed.Rows(); ++i) {
    if (limits.stop && limits.stop()) throw CheckStopped();
    for (int j = 1; j <= computed.Cols(); ++j) {
      const double value = computed(i, j);
      const ElementProof& proof = result.At(i, j);
      Note(result.wide, HeldDigits(CStr(value), kWideDigits, value, proof), i, j);
      Note(result.narrow, HeldDigits(CStrSingle(value), kNarrowDigits, value, proof), i, j);
    }
  }
}

}  // namespace

ProofAnswer Prove(const ProofQuestion& question, const ProofLimits& limits) {
  const KeepArithmeticFaults faults;
  const LibraryCaches caches;
  ProofAnswer answer;
  for (const Matrix& computed : question.computed) {
    answer.results.push_back(
        {computed.Rows(), computed.Cols(), std::vector<ElementProof>(computed.Size()), {}, {}});
  }
  if (!Fits(question)) {
    answer.outcome = ProofOutcome::kDoesNotFit;
    return answer;
  }
  try {
    if (AllAreFinite(question)) {
      try {
        const Watch watch(limits);
        watch.Demand(EstimateProof(question).bytes);
        Dispatch(question, watch, answer);
      } catch (const LimitReached&) {
        // What is proved so far stands in the answer.
      }
    }
    for (std::size_t k = 0; k < question.computed.size(); ++k) {
      FindFewest(question.computed[k], limits, answer.results[k]);
    }
  } catch (const CheckStopped&) {
    answer.outcome = ProofOutcome::kStopped;
  }
  return answer;
}

}  // namespace qmx
