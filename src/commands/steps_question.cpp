// SPDX-License-Identifier: MIT
#include "commands/steps_question.h"

#include <algorithm>
#include <array>

#include "commands/digit_question.h"
#include "workspace/staleness.h"

namespace qmx {
namespace {

struct Derivable {
  Result result;
  DerivationTask task;
  std::string_view title;
};

constexpr std::array<Derivable, 15> kDerivable{{
    {kResultDeterminant, DerivationTask::kDeterminant, "Determinant of A"},
    {kResultTrace, DerivationTask::kTrace, "Trace of A"},
    {kResultDefiniteness, DerivationTask::kDefiniteness, "Definiteness of A"},
    {kResultSymmetry, DerivationTask::kSymmetry, "Symmetry of A"},
    {kResultSum, DerivationTask::kSum, "Sum A + B"},
    {kResultDifference, DerivationTask::kDifference, "Difference A \u2212 B"},
    {kResultProduct, DerivationTask::kProduct, "Product A \u00b7 B"},
    {kResultInverse, DerivationTask::kInverse, "Inverse of A"},
    {kResultAdjoint, DerivationTask::kAdjoint, "Adjoint of A"},
    {kResultTranspose, DerivationTask::kTranspose, "Transpose of A"},
    {kResultLU, DerivationTask::kLu, "Factors L and U"},
    {kResultQR, DerivationTask::kQr, "Factors Q and R"},
    {kResultEigenvalues, DerivationTask::kEigenvalues, "Eigenvalues of A"},
    {kResultEigenvectors, DerivationTask::kEigenvectors, "Eigenvectors of A"},
    {kResultSolution, DerivationTask::kSolution, "Solution of the system"},
}};

const Derivable* Find(Result result) {
  const auto* found = std::ranges::find(kDerivable, result, &Derivable::result);
  return found == kDerivable.end() ? nullptr : found;
}

DerivationTask SolutionTask(const Computation& computation) {
  switch (computation.systemMethod) {
    case kSystemByFactors:
      return DerivationTask::kSolutionByFactors;
    case kSystemOverdetermined:
      return DerivationTask::kLeastSquares;
    default:
      return DerivationTask::kSolution;
  }
}

/// There is more than one way to these, and only the result of L and U shows which one was gone.
bool NeedsManner(Result result) {
  return result == kResultAdjoint || result == kResultEigenvalues || result == kResultEigenvectors;
}

}  // namespace

bool HasDerivation(Result result) { return Find(result) != nullptr; }

std::string_view DerivationTitle(Result result) {
  const Derivable* entry = Find(result);
  return entry == nullptr ? std::string_view() : entry->title;
}

std::string WhyNoSteps(const Workspace& workspace, Result result) {
  if (!HasDerivation(result)) return "There are no steps of this";
  const Computation* computation = workspace.computations[result].get();
  if (!(workspace.*InfoOf(result).flag) || computation == nullptr)
    return "This has not been computed";
  const std::string stale = Staleness(workspace, result);
  if (!stale.empty()) return stale + ": compute it again to see its steps";
  if (NeedsManner(result) && !computation->manner.isKnown)
    return "Files do not tell how this was computed: compute it again to see its steps";
  return {};
}

DerivationQuestion StepsQuestion(const Workspace& workspace, Result result, int row, int col) {
  const Computation& computation = *workspace.computations[result];
  ProofQuestion operands = DigitQuestion(workspace, result, computation);
  DerivationQuestion question;
  question.task = Find(result)->task;
  question.a = std::move(operands.a);
  question.b = std::move(operands.b);
  question.system = std::move(operands.system);
  if (result == kResultSolution) {
    question.task = SolutionTask(computation);
    question.exchanges = std::move(operands.exchanges);
  }
  question.pivoting =
      computation.manner.isKnown ? computation.manner.pivoting : computation.exchanges.Rows() > 0;
  question.byCofactors = computation.manner.byCofactors;
  question.eigen = computation.manner.eigen;
  question.shiftIndex = computation.manner.shiftIndex;
  question.row = row;
  question.col = col;
  return question;
}

bool IsAboutElement(const Workspace& workspace, Result result) {
  switch (result) {
    case kResultSum:
    case kResultDifference:
    case kResultProduct:
      return true;
    case kResultAdjoint:
      // By the inverse all cofactors come at once.
      return workspace.computations[result]->manner.byCofactors;
    default:
      return false;
  }
}

std::size_t ExactIndex(Slot slot) { return slot == ResultOf(slot).firstSlot ? 0 : 1; }

}  // namespace qmx
