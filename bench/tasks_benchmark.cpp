#include <benchmark/benchmark.h>
#if defined(__linux__)
#include <malloc.h>
#endif

#include <algorithm>
#include <string>
#include <vector>

#include "algorithms/definiteness.h"
#include "algorithms/determinant.h"
#include "algorithms/eigenvalues.h"
#include "algorithms/eigenvectors.h"
#include "algorithms/elementary.h"
#include "algorithms/hessenberg.h"
#include "algorithms/inverse.h"
#include "algorithms/linear_system.h"
#include "algorithms/lu.h"
#include "algorithms/qr.h"
#include "base/arithmetic.h"
#include "plain_loops.h"
#include "table_reporter.h"

#if defined(QMX_BENCH_LIBRARIES)
#include "libraries.h"
#endif

namespace qmx::bench {
namespace {

Progress unheard;

/// Entries in [-1, 1), the same in every run.
Matrix RandomMatrix(int rows, int cols) {
  Matrix A(rows, cols);
  std::uint64_t state = 1;
  for (std::size_t k = 0; k < A.Size(); ++k) {
    state = state * 6364136223846793005u + 1442695040888963407u;
    A.Data()[k] = static_cast<double>(state >> 11) * 0x1p-52 - 1;
  }
  return A;
}

Matrix DefiniteMatrix(int n) {
  Matrix A = RandomMatrix(n, n);
  for (int i = 1; i <= n; ++i) {
    A(i, i) += 2 * n;
    for (int j = 1; j < i; ++j) A(i, j) = A(j, i);
  }
  return A;
}

template <class Task>
void Measure(const std::string& task, int n, const char* who, Task run) {
  const std::string name = task + "/" + std::to_string(n) + "/" + who;
  benchmark::RegisterBenchmark(name.c_str(), [run](benchmark::State& state) {
    for (auto round : state) {
      static_cast<void>(round);
      ClearArithmeticFaults();
      benchmark::DoNotOptimize(run());
    }
  })->MinTime(0.05);
}

// Plain loops that would take minutes are left out.
constexpr int kLargestPlain = 500;

void RegisterProduct(int n) {
  const Matrix A = RandomMatrix(n, n);
  const Matrix B = RandomMatrix(n, n);
  Measure("product", n, "program", [=] { return Product(A, B, unheard); });
  if (n <= kLargestPlain) Measure("product", n, "plain", [=] { return PlainProduct(A, B); });
#if defined(QMX_BENCH_LIBRARIES)
  Measure("product", n, "openblas", [=] { return OpenBlasProduct(A, B); });
  Measure("product", n, "eigen", [=] { return EigenProduct(A, B); });
#endif
}

void RegisterElimination(int n) {
  const Matrix A = RandomMatrix(n, n);
  const Matrix system = RandomMatrix(n, n + 1);
  Measure("LU factors", n, "program", [=] { return FactorLu(A, true, unheard); });
  if (n <= 1000) Measure("LU factors", n, "plain", [=] { return PlainLu(A); });
  Measure("determinant", n, "program", [=] { return Determinant(A, unheard); });
  if (n <= 1000) Measure("determinant", n, "plain", [=] { return PlainDeterminant(A); });
  Measure("one-shot solution", n, "program", [=] { return SolveOneShot(system, unheard); });
  if (n <= 1000) Measure("one-shot solution", n, "plain", [=] { return PlainSolution(system); });
#if defined(QMX_BENCH_LIBRARIES)
  Measure("LU factors", n, "lapack", [=] { return LapackLu(A); });
  Measure("determinant", n, "lapack", [=] { return LapackLu(A); });
  Measure("one-shot solution", n, "lapack", [=] { return LapackSolution(system); });
#endif
}

void RegisterInverse(int n) {
  const Matrix A = RandomMatrix(n, n);
  Measure("inverse", n, "program", [=] { return Inverse(A, unheard); });
  if (n <= kLargestPlain) Measure("inverse", n, "plain", [=] { return PlainInverse(A); });
  Measure("adjoint by inverse", n, "program", [=] { return AdjointByInverse(A, unheard); });
  if (n <= kLargestPlain)
    Measure("adjoint by inverse", n, "plain", [=] { return PlainInverse(A); });
#if defined(QMX_BENCH_LIBRARIES)
  Measure("inverse", n, "lapack", [=] { return LapackInverse(A); });
#endif
}

void RegisterAdjoint(int n) {
  const Matrix A = RandomMatrix(n, n);
  Measure("adjoint", n, "program", [=] { return AdjointByCofactors(A, unheard); });
  Measure("adjoint", n, "plain", [=] { return PlainAdjoint(A); });
}

void RegisterQr(int n) {
  const Matrix A = RandomMatrix(n, n);
  Measure("QR factors", n, "program", [=] { return FactorQr(A, unheard); });
  if (n <= kLargestPlain) Measure("QR factors", n, "plain", [=] { return PlainQr(A); });
#if defined(QMX_BENCH_LIBRARIES)
  Measure("QR factors", n, "lapack", [=] { return LapackQr(A); });
#endif
}

void RegisterDefiniteness(int n) {
  const Matrix A = DefiniteMatrix(n);
  Measure("definiteness", n, "program", [=] { return TestDefiniteness(A, unheard); });
  if (n <= 1000) Measure("definiteness", n, "plain", [=] { return PlainDefiniteness(A); });
#if defined(QMX_BENCH_LIBRARIES)
  Measure("definiteness", n, "lapack", [=] { return LapackCholesky(A); });
#endif
}

void RegisterHessenberg(int n) {
  const Matrix A = RandomMatrix(n, n);
  Measure("Hessenberg reduction", n, "program", [=] {
    Matrix M = A;
    ReduceToHessenberg(M);
    return M;
  });
  if (n <= 100) {
    Measure("Hessenberg reduction", n, "plain", [=] { return PlainHessenberg(A); });
  }
  Matrix H = A;
  for (int i = 3; i <= n; ++i) std::fill_n(H.Row(i), i - 2, 0.0);
  constexpr int kCycles = 10;
  Measure("10 Hessenberg cycles", n, "program", [=] {
    Matrix M = H;
    HessenbergQr work(n);
    for (int cycle = 0; cycle < kCycles; ++cycle) StepHessenbergQr(M, n, work);
    return M;
  });
  Measure("10 Hessenberg cycles", n, "plain", [=] { return PlainCycles(H, kCycles); });
}

void RegisterSmallTasks(int n) {
  const Matrix A = RandomMatrix(n, n);
  const Matrix B = RandomMatrix(n, n);
  Measure("sum", n, "program", [=] { return Sum(A, B); });
  Measure("transpose", n, "program", [=] { return Transpose(A); });
  const Matrix tall = RandomMatrix(2 * n, n + 1);
  Measure("least squares (2n equations)", n, "program",
          [=] { return SolveLeastSquares(tall, unheard); });
  const LuFactors factors = FactorLu(A, true, unheard);
  const Matrix b = RandomMatrix(n, 1);
  Measure("solution by factors", n, "program",
          [=] { return SolveByFactors(factors.L, factors.U, factors.exchanges, b); });
}

void RegisterEigen(int n) {
  const Matrix A = DefiniteMatrix(n);
  const EigenParameters parameters{0.0005, 100, 0.1, 0.001};
  Measure("eigenvalues (100 cycles at most)", n, "program", [=] {
    std::int32_t shiftIndex = 0;
    return FindEigenvalues(A, parameters, shiftIndex, unheard);
  });
  const std::vector<double> start(n, 0.25);
  Measure("eigenvector", n, "program", [=] {
    std::vector<double> x = start;
    return FindEigenvector(A, A(1, 1), 1, parameters, x);
  });
}

void RegisterAll() {
  for (const int n : {10, 30, 100, 300, 500, 1000}) RegisterProduct(n);
  for (const int n : {10, 30, 100, 300, 500, 1000}) RegisterElimination(n);
  for (const int n : {10, 30, 100, 300, 500, 1000}) RegisterInverse(n);
  for (const int n : {10, 30, 100}) RegisterAdjoint(n);
  for (const int n : {10, 30, 100, 200, 300, 500, 1000}) RegisterQr(n);
  for (const int n : {10, 30, 100, 300, 1000}) RegisterDefiniteness(n);
  for (const int n : {10, 30, 100, 300, 500}) RegisterHessenberg(n);
  for (const int n : {10, 100, 300}) RegisterEigen(n);
  for (const int n : {10, 100, 300}) RegisterSmallTasks(n);
}

}  // namespace
}  // namespace qmx::bench

int main(int argc, char** argv) {
#if defined(__GLIBC__)
  // Freed memory stays with the process: what is measured are the tasks of all sides, not how often
  // the system has to hand out fresh pages to the same loop.
  mallopt(M_TRIM_THRESHOLD, 1 << 30);
  mallopt(M_MMAP_THRESHOLD, 32 << 20);
#endif
  benchmark::Initialize(&argc, argv);
#if defined(QMX_BENCH_LIBRARIES)
  qmx::bench::UseOneThread();
#endif
  qmx::bench::RegisterAll();
  qmx::bench::TableReporter table;
  benchmark::RunSpecifiedBenchmarks(&table);
  return 0;
}
