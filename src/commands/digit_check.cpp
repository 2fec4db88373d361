// SPDX-License-Identifier: MIT
#include "commands/digit_check.h"

#include <chrono>
#include <new>
#include <utility>

#include "base/fault.h"

namespace qmx {
namespace {

constexpr double kAsLongAsItTakes = 1e8;  // Seconds.

using Clock = std::chrono::steady_clock;

std::vector<std::shared_ptr<const CellProofs>> CellsOf(const DigitCheck& check,
                                                       ProofAnswer& answer) {
  std::vector<std::shared_ptr<const CellProofs>> all;
  for (std::size_t k = 0; k < answer.results.size(); ++k) {
    auto cells = std::make_shared<CellProofs>();
    cells->computed = check.question.computed[k].Shared();
    cells->proof = std::move(answer.results[k]);
    if (check.result == kResultEigenvectors && k == 1) {
      cells->header = all.front();
      // Columns without a vector show no elements.
      FindFewest(check.of->columns, *cells);
    }
    all.push_back(std::move(cells));
  }
  return all;
}

DigitFinding Checked(const Prover& prover, const DigitCheck& check,
                     const std::function<bool()>& stop) {
  DigitFinding finding;
  finding.task = check.question.task;
  finding.tooLong = !check.asked && prover.Estimate(check.question).seconds > kUnaskedSeconds;
  if (finding.tooLong) return finding;
  ProofLimits limits;
  limits.stop = stop;
  limits.seconds = check.asked ? kAsLongAsItTakes : kUnaskedSeconds;
  const Clock::time_point start = Clock::now();
  ProofAnswer answer = prover.Prove(check.question, limits);
  const std::chrono::duration<double> took = Clock::now() - start;
  finding.outcome = answer.outcome;
  finding.singular = answer.singular;
  finding.conditionExponent = answer.conditionExponent;
  finding.verdict = answer.verdict;
  finding.matrices = CellsOf(check, answer);
  const bool isOpen = answer.outcome == ProofOutcome::kPartlyProved ||
                      answer.outcome == ProofOutcome::kCannotBeProved;
  finding.tooLong = isOpen && took.count() > limits.seconds;
  return finding;
}

}  // namespace

std::optional<DigitFinding> RunDigitCheck(const Prover& prover, const DigitCheck& check,
                                          const std::function<bool()>& stop) {
  try {
    DigitFinding finding = Checked(prover, check, stop);
    if (finding.outcome == ProofOutcome::kStopped) return std::nullopt;
    return finding;
  } catch (const std::bad_alloc&) {
  } catch (const RuntimeFault&) {
  }
  DigitFinding none;
  none.task = check.question.task;
  return none;
}

}  // namespace qmx
