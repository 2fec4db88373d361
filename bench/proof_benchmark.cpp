// SPDX-License-Identifier: MIT
#include <benchmark/benchmark.h>

#include <cstdint>
#include <utility>

#include "algorithms/determinant.h"
#include "algorithms/eigenvalues.h"
#include "algorithms/eigenvectors.h"
#include "algorithms/elementary.h"
#include "algorithms/inverse.h"
#include "algorithms/linear_system.h"
#include "algorithms/lu.h"
#include "algorithms/qr.h"
#include "operands.h"
#include "proof/proof.h"

// What the check of a result's digits takes, beside what was estimated for it before it began
// (counter "estimate", in seconds) and the fewest digits that it found ("digits"). Processor time
// of one thread.

namespace qmx::bench {
namespace {

Progress unheard;

Matrix SymmetricMatrix(int n) {
  Matrix A = RandomMatrix(n, n);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j < i; ++j) A(i, j) = A(j, i);
  }
  return A;
}

/// The last row is half of the first, exactly.
Matrix SingularMatrix(int n) {
  Matrix A = RandomMatrix(n, n);
  for (int j = 1; j <= n; ++j) A(n, j) = A(1, j) / 2;
  return A;
}

Matrix Scalar(double value) {
  Matrix scalar(1, 1);
  scalar(1, 1) = value;
  return scalar;
}

ProofQuestion Question(ProofTask task, Matrix A, std::vector<Matrix> computed) {
  ProofQuestion question;
  question.task = task;
  question.a = std::move(A);
  question.computed = std::move(computed);
  return question;
}

ProofQuestion OfProduct(int n) {
  ProofQuestion question = Question(ProofTask::kProduct, RandomMatrix(n, n), {});
  question.b = SymmetricMatrix(n);
  question.computed = {Product(question.a, question.b, unheard)};
  return question;
}

ProofQuestion OfDeterminant(int n) {
  const Matrix A = RandomMatrix(n, n);
  return Question(ProofTask::kDeterminant, A, {Scalar(Determinant(A, unheard))});
}

ProofQuestion OfInverse(int n) {
  const Matrix A = RandomMatrix(n, n);
  return Question(ProofTask::kInverse, A, {*Inverse(A, unheard)});
}

ProofQuestion OfSingular(int n) {
  return Question(ProofTask::kInverse, SingularMatrix(n), {RandomMatrix(n, n)});
}

ProofQuestion OfAdjoint(int n) {
  const Matrix A = RandomMatrix(n, n);
  return Question(ProofTask::kAdjoint, A, {*AdjointByInverse(A, unheard)});
}

ProofQuestion OfLu(int n) {
  const Matrix A = RandomMatrix(n, n);
  LuFactors factors = FactorLu(A, true, unheard);
  ProofQuestion question = Question(ProofTask::kLu, A, {factors.L, factors.U});
  question.exchanges = factors.exchanges;
  return question;
}

ProofQuestion OfQr(int n) {
  const Matrix A = RandomMatrix(n, n);
  QrFactors factors = FactorQr(A, unheard);
  return Question(ProofTask::kQr, A, {factors.Q, factors.R});
}

ProofQuestion OfSolution(int n) {
  const Matrix system = RandomMatrix(n, n + 1);
  return Question(ProofTask::kSolution, system, {SolveOneShot(system, unheard).x});
}

ProofQuestion OfLeastSquares(int n) {
  const Matrix system = RandomMatrix(2 * n, n + 1);
  return Question(ProofTask::kLeastSquares, system, {SolveLeastSquares(system, unheard).x});
}

ProofQuestion OfEigen(int n) {
  const Matrix A = SymmetricMatrix(n);
  const EigenParameters parameters{1e-13, 1000, .1, .001};
  std::int32_t shiftIndex = 0;
  const EigenvalueRun run = FindEigenvalues(A, parameters, shiftIndex, unheard);
  Matrix values(run.count, 1);
  Matrix vectors(n, run.count);
  for (int t = 1; t <= run.count; ++t) {
    values(t, 1) = run.eigenvalues[t - 1];
    std::vector<double> vector(n, .25);
    FindEigenvector(A, values(t, 1), static_cast<int>(run.origin[t - 1]), parameters, vector,
                    unheard);
    for (int i = 1; i <= n; ++i) vectors(i, t) = vector[i - 1];
  }
  return Question(ProofTask::kEigen, A, {values, vectors});
}

void Measure(benchmark::State& state, ProofQuestion (*make)(int)) {
  const ProofQuestion question = make(static_cast<int>(state.range(0)));
  ProofLimits limits;
  limits.seconds = 1000;
  ProofAnswer answer;
  for (auto _ : state) answer = Prove(question, limits);
  state.counters["estimate"] = EstimateProof(question).seconds;
  state.counters["outcome"] = static_cast<double>(answer.outcome);
  for (const ResultProof& result : answer.results) state.counters["digits"] = result.wide.digits;
}

void Register(const char* name, ProofQuestion (*make)(int), const std::vector<int>& sizes) {
  auto* const bench = benchmark::RegisterBenchmark(name, Measure, make);
  for (const int size : sizes) bench->Arg(size);
  bench->Unit(benchmark::kMillisecond);
}

}  // namespace
}  // namespace qmx::bench

int main(int argc, char** argv) {
  using namespace qmx::bench;
  Register("Product", OfProduct, {10, 100, 300});
  Register("Determinant", OfDeterminant, {10, 100, 300});
  Register("Inverse", OfInverse, {10, 50, 100, 300});
  Register("SingularInverse", OfSingular, {10, 100, 200});
  Register("Adjoint", OfAdjoint, {10, 100});
  Register("Lu", OfLu, {10, 100, 300});
  Register("Qr", OfQr, {10, 100, 200});
  Register("Solution", OfSolution, {10, 100, 300});
  Register("LeastSquares", OfLeastSquares, {10, 100, 200});
  Register("Eigen", OfEigen, {10, 50, 100});
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
