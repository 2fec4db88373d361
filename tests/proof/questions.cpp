// SPDX-License-Identifier: MIT
#include "proof/questions.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "algorithms/determinant.h"
#include "algorithms/eigenvalues.h"
#include "algorithms/eigenvectors.h"
#include "algorithms/elementary.h"
#include "algorithms/inverse.h"
#include "algorithms/linear_system.h"
#include "algorithms/lu.h"
#include "algorithms/qr.h"
#include "base/arithmetic.h"
#include "base/fault.h"

namespace qmx::testing {
namespace {

Progress unheard;

Matrix Vandermonde(Dice& dice, int rows, int cols) {
  Matrix A(rows, cols);
  for (int i = 1; i <= rows; ++i) {
    const double x = dice.Chance(0.5) ? i : dice.Real(-2, 2);
    for (int j = 1; j <= cols; ++j) A(i, j) = std::pow(x, j - 1);
  }
  return A;
}

Matrix Graded(Dice& dice, int rows, int cols) {
  Matrix A = RealMatrix(dice, rows, cols);
  const int step = dice.Integer(-8, 8);
  for (int i = 1; i <= rows; ++i) {
    for (int j = 1; j <= cols; ++j) A(i, j) *= std::pow(10.0, step * (i + j) / 2);
  }
  return A;
}

bool IsFinite(const Matrix& A) {
  return std::all_of(A.Data(), A.Data() + A.Size(), [](double x) { return std::isfinite(x); });
}

/// The eigenvalues and eigenvectors that the program finds, with a loose or a tight error bound.
bool ComputeEigen(Dice& dice, ProofQuestion& question) {
  const Matrix& A = question.a;
  const EigenParameters parameters{dice.Chance(0.5) ? .0005 : 1e-14, 200, .1, .001};
  std::int32_t shiftIndex = 0;
  const EigenvalueRun run = FindEigenvalues(A, parameters, shiftIndex, unheard);
  if (run.count == 0) return false;
  Matrix values(run.count, 1);
  Matrix vectors(A.Rows(), run.count);
  for (int t = 1; t <= run.count; ++t) {
    values(t, 1) = run.eigenvalues[t - 1];
    std::vector<double> vector(A.Rows());
    for (double& element : vector) element = dice.Real(-.5, .5);
    FindEigenvector(A, values(t, 1), static_cast<int>(run.origin[t - 1]), parameters, vector,
                    unheard);
    for (int i = 1; i <= A.Rows(); ++i) vectors(i, t) = vector[i - 1];
  }
  question.computed = {values, vectors};
  return true;
}

}  // namespace

Matrix Scalar(double value) {
  Matrix scalar(1, 1);
  scalar(1, 1) = value;
  return scalar;
}

ProofQuestion Ask(ProofTask task, Matrix A, std::vector<Matrix> computed) {
  ProofQuestion question;
  question.task = task;
  question.a = std::move(A);
  question.computed = std::move(computed);
  return question;
}

std::string NameOf(ProofTask task) {
  static const char* const kNames[] = {
      "Sum",   "Difference",  "Product",   "Transpose",    "Scaled",   "Shifted",
      "Trace", "Determinant", "Inverse",   "Adjoint",      "Lu",       "Qr",
      "Eigen", "Solution",    "ByFactors", "LeastSquares", "Symmetry", "Definiteness"};
  return kNames[static_cast<int>(task)];
}

QuestionSource::QuestionSource(ProofTask task, std::uint64_t seed, int largest)
    : task_(task), largest_(largest), cases_(seed, CaseShape::kAny, largest) {}

Matrix QuestionSource::NextMatrix(int rows, int cols) {
  Dice& dice = cases_.Randomness();
  const int kind = ++dealt_ % 27;
  if (kind == 0) return Vandermonde(dice, rows, cols);
  if (kind == 1) return Graded(dice, rows, cols);
  return cases_.Next(rows, cols);
}

bool QuestionSource::ComputeSystem(ProofQuestion& question) {
  Dice& dice = cases_.Randomness();
  const int n = question.a.Rows();
  if (task_ == ProofTask::kSolutionByFactors) {
    const LuFactors factors = FactorLu(question.a, true, unheard);
    question.a = factors.L;
    question.b = factors.U;
    question.exchanges = dice.Chance(0.8) ? factors.exchanges : Matrix();
    question.system = NextMatrix(n, 1);
    const SystemSolution solution =
        SolveByFactors(question.a, question.b, question.exchanges, question.system, unheard);
    question.computed = {solution.x};
    return solution.solved;
  }
  const int rows = task_ == ProofTask::kSolution ? n : n + dice.Integer(0, 4);
  question.a = NextMatrix(rows, n + 1);
  const SystemSolution solution = task_ == ProofTask::kSolution
                                      ? SolveOneShot(question.a, unheard)
                                      : SolveLeastSquares(question.a, unheard);
  question.computed = {solution.x};
  return solution.solved;
}

bool QuestionSource::Compute(ProofQuestion& question) {
  Dice& dice = cases_.Randomness();
  const Matrix& A = question.a;
  const auto keep = [&](auto... results) {
    question.computed = {std::move(results)...};
    return true;
  };
  switch (task_) {
    case ProofTask::kSum:
    case ProofTask::kDifference:
      question.b = NextMatrix(A.Rows(), A.Cols());
      return keep(task_ == ProofTask::kSum ? Sum(A, question.b, unheard)
                                           : Difference(A, question.b, unheard));
    case ProofTask::kProduct:
      question.b = NextMatrix(A.Cols(), dice.Integer(1, largest_));
      return keep(Product(A, question.b, unheard));
    case ProofTask::kTranspose:
      return keep(Transpose(A, unheard));
    case ProofTask::kScaled:
    case ProofTask::kShifted: {
      question.scalar = dice.Chance(0.5) ? dice.Integer(-9, 9) : dice.Real(-1, 1);
      Matrix changed = A;
      if (task_ == ProofTask::kScaled) ScaleInPlace(changed, question.scalar, unheard);
      if (task_ == ProofTask::kShifted) ShiftInPlace(changed, question.scalar);
      return keep(changed);
    }
    case ProofTask::kTrace:
      return keep(Scalar(Trace(A)));
    case ProofTask::kDeterminant:
      return keep(Scalar(Determinant(A, unheard)));
    case ProofTask::kInverse: {
      const auto inverse = Inverse(A, unheard);
      return inverse && keep(*inverse);
    }
    case ProofTask::kAdjoint: {
      const auto adjoint = AdjointByInverse(A, unheard);
      return keep(adjoint && dice.Chance(0.5) ? *adjoint : AdjointByCofactors(A, unheard));
    }
    case ProofTask::kLu: {
      LuFactors factors = FactorLu(A, dice.Chance(0.7), unheard);
      question.exchanges = factors.exchanges;
      return factors.factored && keep(factors.L, factors.U);
    }
    case ProofTask::kQr: {
      QrFactors factors = FactorQr(A, unheard);
      return factors.factored && keep(factors.Q, factors.R);
    }
    case ProofTask::kEigen:
      return ComputeEigen(dice, question);
    default:
      return ComputeSystem(question);
  }
}

std::optional<ProofQuestion> QuestionSource::Next() {
  Dice& dice = cases_.Randomness();
  const int rows = dice.Integer(task_ == ProofTask::kEigen ? 2 : 1, largest_);
  int cols = rows;
  const bool anyShape = task_ <= ProofTask::kShifted || task_ == ProofTask::kLu;
  if (anyShape && dice.Chance(0.5)) cols = dice.Integer(1, largest_);
  if (task_ == ProofTask::kQr) cols = dice.Integer(1, rows);
  ProofQuestion question = Ask(task_, NextMatrix(rows, cols), {});
  // Real eigenvalues are what the program finds.
  if (task_ == ProofTask::kEigen && dice.Chance(0.7)) {
    for (int i = 1; i <= rows; ++i) {
      for (int j = 1; j < i; ++j) question.a(i, j) = question.a(j, i);
    }
  }
  ClearArithmeticFaults();
  try {
    if (!Compute(question)) return std::nullopt;
  } catch (const RuntimeFault&) {
    return std::nullopt;
  }
  const bool isFinite = IsFinite(question.a) && IsFinite(question.b) &&
                        std::all_of(question.computed.begin(), question.computed.end(), IsFinite);
  return isFinite ? std::optional(std::move(question)) : std::nullopt;
}

}  // namespace qmx::testing
