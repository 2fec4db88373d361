// SPDX-License-Identifier: MIT
#include "commands/digit_question.h"

#include <algorithm>
#include <optional>

#include "output/reports.h"

namespace qmx {
namespace {

/// The part of a matrix that a task has read.
Matrix Block(const Matrix& whole, int rows, int cols) {
  if (rows == whole.Rows() && cols == whole.Cols()) return whole.Shared();
  if (rows > whole.Rows() || cols > whole.Cols()) return {};
  Matrix block(rows, cols);
  for (int i = 1; i <= rows && cols > 0; ++i) std::copy_n(whole.Row(i), cols, block.Row(i));
  return block;
}

Matrix Scalar(double number) {
  Matrix scalar(1, 1);
  scalar(1, 1) = number;
  return scalar;
}

std::optional<ProofTask> TaskOf(Result result) {
  switch (result) {
    case kResultDeterminant:
      return ProofTask::kDeterminant;
    case kResultTrace:
      return ProofTask::kTrace;
    case kResultDefiniteness:
      return ProofTask::kDefiniteness;
    case kResultSymmetry:
      return ProofTask::kSymmetry;
    case kResultSum:
      return ProofTask::kSum;
    case kResultDifference:
      return ProofTask::kDifference;
    case kResultProduct:
      return ProofTask::kProduct;
    case kResultLU:
      return ProofTask::kLu;
    case kResultQR:
      return ProofTask::kQr;
    case kResultInverse:
      return ProofTask::kInverse;
    case kResultAdjoint:
      return ProofTask::kAdjoint;
    case kResultTranspose:
      return ProofTask::kTranspose;
    case kResultEigenvalues:
    case kResultEigenvectors:
      return ProofTask::kEigen;
    case kResultSolution:
      return ProofTask::kSolution;
    default:
      return std::nullopt;
  }
}

std::optional<Definiteness> DefinitenessOf(const std::string& words) {
  for (int k = 0; k <= static_cast<int>(Definiteness::kNegativeSemidefinite); ++k) {
    const auto verdict = static_cast<Definiteness>(k);
    if (DefinitenessText(verdict) == words) return verdict;
  }
  return std::nullopt;
}

/// False where the words are unknown.
bool TakeVerdict(Result result, const std::string& words, ProofQuestion& question) {
  if (result == kResultSymmetry) {
    question.symmetric = words == "Yes";
    return question.symmetric || words == "No";
  }
  const std::optional<Definiteness> verdict = DefinitenessOf(words);
  question.definiteness = verdict.value_or(Definiteness::kIndefinite);
  return verdict.has_value();
}

void TakeSystem(const Workspace& workspace, const Computation& computation,
                ProofQuestion& question) {
  const Matrix& system = workspace.At(kSlotSystem).array;
  if (computation.systemMethod != kSystemByFactors) {
    if (computation.systemMethod == kSystemOverdetermined) question.task = ProofTask::kLeastSquares;
    question.a = system.Shared();
    return;
  }
  const StoredFactors& factors = computation.factors;
  question.task = ProofTask::kSolutionByFactors;
  question.a = factors.L.Shared();
  question.b = factors.U.Shared();
  if (factors.exchangeRows != 0) question.exchanges = factors.exchanges.Shared();
  question.system = system.Shared();
}

void TakeEigen(const Workspace& workspace, Result result, const Computation& computation,
               ProofQuestion& question) {
  // The task works on as many columns of A as A has rows.
  question.a = Block(workspace.At(kSlotA).array, computation.aRows, computation.aRows);
  if (result == kResultEigenvalues) {
    question.computed.emplace_back();
  } else {
    question.computed.insert(question.computed.begin(), computation.eigenvalues.Shared());
  }
}

ProofQuestion ChangeQuestion(const Computation& computation) {
  ProofQuestion question;
  question.task =
      computation.change == Computation::Change::kScaled ? ProofTask::kScaled : ProofTask::kShifted;
  question.a = computation.before.Shared();
  question.scalar = computation.scalar;
  question.computed.push_back(computation.computed.front().Shared());
  return question;
}

}  // namespace

bool IsChangedByNumber(const Workspace& workspace) {
  const Computation* change = workspace.computations[kResultA].get();
  return workspace.ACreated && change != nullptr && change->revision == workspace.revisions.a;
}

bool IsQuestioned(Result result, const Computation& computation) {
  ProofQuestion question;
  if (result == kResultA) return computation.change != Computation::Change::kNone;
  if (InfoOf(result).verdict != nullptr) return TakeVerdict(result, computation.verdict, question);
  return TaskOf(result).has_value();
}

ProofQuestion DigitQuestion(const Workspace& workspace, Result result,
                            const Computation& computation) {
  if (result == kResultA) return ChangeQuestion(computation);
  const ResultInfo& info = InfoOf(result);
  ProofQuestion question;
  question.task = TaskOf(result).value_or(ProofTask::kSum);
  if (info.verdict != nullptr) TakeVerdict(result, computation.verdict, question);
  if (info.number != nullptr) question.computed.push_back(Scalar(computation.number));
  for (const Matrix& matrix : computation.computed) question.computed.push_back(matrix.Shared());
  question.exchanges = computation.exchanges.Shared();
  if (result == kResultSolution) {
    TakeSystem(workspace, computation, question);
  } else if (question.task == ProofTask::kEigen) {
    TakeEigen(workspace, result, computation, question);
  } else {
    question.a = Block(workspace.At(kSlotA).array, computation.aRows, computation.aCols);
  }
  if ((info.operands & kFromB) != 0)
    question.b = Block(workspace.At(kSlotB).array, computation.bRows, computation.bCols);
  return question;
}

}  // namespace qmx
