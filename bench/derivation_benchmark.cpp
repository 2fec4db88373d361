// SPDX-License-Identifier: MIT
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdint>

#include "algorithms/lu.h"
#include "derivation/derivation.h"
#include "operands.h"

// What the derivation of a result takes, in processor time of one thread: of whole numbers, as
// students type them, and of numbers with 15 digits. A document is to be there within 50 ms for
// matrices of order 8.

namespace qmx::bench {
namespace {

constexpr int kWhole = 0;

Matrix Operand(int rows, int cols, std::int64_t kind) {
  Matrix A = RandomMatrix(rows, cols);
  if (kind != kWhole) return A;
  for (std::size_t k = 0; k < A.Size(); ++k) A.Data()[k] = std::round(9 * A.Data()[k]);
  return A;
}

DerivationQuestion Question(DerivationTask task, int n, std::int64_t kind) {
  DerivationQuestion question;
  question.task = task;
  question.eigen = {0.0005, 100, 0.1, 0.001};
  const bool isSystem = task == DerivationTask::kSolution || task == DerivationTask::kLeastSquares;
  question.a = Operand(n, isSystem ? n + 1 : n, kind);
  question.b = Operand(n, n, kind);
  if (task == DerivationTask::kDefiniteness) {
    for (int i = 1; i <= n; ++i) {
      for (int j = 1; j < i; ++j) question.a(i, j) = question.a(j, i);
    }
  }
  if (task == DerivationTask::kSolutionByFactors) {
    LuFactors lu = FactorLu(question.a, true, NoProgress());
    question.a = lu.L;
    question.b = lu.U;
    question.exchanges = lu.exchanges;
    question.system = Operand(n, 1, kind);
  }
  return question;
}

void MeasureDerivation(benchmark::State& state, DerivationTask task, bool byCofactors) {
  DerivationQuestion question = Question(task, static_cast<int>(state.range(0)), state.range(1));
  question.byCofactors = byCofactors;
  std::size_t blocks = 0;
  for (auto _ : state) {
    const Document document = ExactDeriver().Derive(question, {});
    blocks = document.blocks.size();
    benchmark::DoNotOptimize(document);
  }
  state.counters["blocks"] = static_cast<double>(blocks);
}

void MeasureElements(benchmark::State& state, DerivationTask task) {
  const DerivationQuestion question =
      Question(task, static_cast<int>(state.range(0)), state.range(1));
  for (auto _ : state) {
    benchmark::DoNotOptimize(ExactDeriver().ExactElements(question, {}));
  }
}

void Sizes(benchmark::internal::Benchmark* measured) {
  measured->ArgNames({"n", "digits"})->Unit(benchmark::kMillisecond);
  for (const int n : {3, 8, 20}) {
    for (const int digits : {kWhole, 15}) measured->Args({n, digits});
  }
}

void ElementSizes(benchmark::internal::Benchmark* measured) {
  measured->ArgNames({"n", "digits"})->Unit(benchmark::kMillisecond);
  for (const int n : {8, 30, 60, 100}) {
    for (const int digits : {kWhole, 15}) measured->Args({n, digits});
  }
}

#define QMX_DERIVATION(name, task, byCofactors) \
  BENCHMARK_CAPTURE(MeasureDerivation, name, DerivationTask::task, byCofactors)->Apply(Sizes)
QMX_DERIVATION(sum, kSum, true);
QMX_DERIVATION(product, kProduct, true);
QMX_DERIVATION(determinant, kDeterminant, true);
QMX_DERIVATION(inverse, kInverse, true);
QMX_DERIVATION(cofactors, kAdjoint, true);
QMX_DERIVATION(adjoint_by_inverse, kAdjoint, false);
QMX_DERIVATION(lu, kLu, true);
QMX_DERIVATION(qr, kQr, true);
QMX_DERIVATION(definiteness, kDefiniteness, true);
QMX_DERIVATION(solution, kSolution, true);
QMX_DERIVATION(solution_by_factors, kSolutionByFactors, true);
QMX_DERIVATION(least_squares, kLeastSquares, true);
QMX_DERIVATION(eigenvalues, kEigenvalues, true);
QMX_DERIVATION(eigenvectors, kEigenvectors, true);

#define QMX_ELEMENTS(name, task) \
  BENCHMARK_CAPTURE(MeasureElements, name, DerivationTask::task)->Apply(ElementSizes)
QMX_ELEMENTS(product, kProduct);
QMX_ELEMENTS(inverse, kInverse);
QMX_ELEMENTS(lu, kLu);
QMX_ELEMENTS(qr, kQr);
QMX_ELEMENTS(least_squares, kLeastSquares);

}  // namespace
}  // namespace qmx::bench

BENCHMARK_MAIN();
