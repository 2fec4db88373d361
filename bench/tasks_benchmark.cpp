// SPDX-License-Identifier: MIT
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <string_view>
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
#include "base/memory.h"
#include "base/team.h"
#include "files/matrix_file.h"
#include "operands.h"
#include "peak.h"
#include "plain_files.h"
#include "plain_loops.h"
#include "reference/reference.h"
#include "sizes.h"
#include "table_reporter.h"
#include "workspace/slot_table.h"

#if defined(QMX_BENCH_LIBRARIES)
#include "libraries.h"
#endif

namespace qmx::bench {
namespace {

Progress unheard;

Matrix DefiniteMatrix(int n, int seed = 1) {
  Matrix A = RandomMatrix(n, n, seed);
  for (int i = 1; i <= n; ++i) {
    A(i, i) += 2 * n;
    for (int j = 1; j < i; ++j) A(i, j) = A(j, i);
  }
  return A;
}

/// Operands that take turns. A processor would know the pivots of a small matrix by heart after a
/// few rounds, which nobody's work has the benefit of.
template <class Operand>
class InTurn {
 public:
  template <class Make>
  InTurn(int count, Make make) {
    for (int k = 1; k <= count; ++k) all_->push_back(make(k));
  }
  const Operand& operator()() const {
    next_ = next_ + 1 == all_->size() ? 0 : next_ + 1;
    return (*all_)[next_];
  }
  template <class Convert>
  auto As(Convert convert) const {
    return InTurn<decltype(convert(Operand()))>(static_cast<int>(all_->size()),
                                                [&](int k) { return convert((*all_)[k - 1]); });
  }

 private:
  std::shared_ptr<std::vector<Operand>> all_ = std::make_shared<std::vector<Operand>>();
  mutable std::size_t next_ = 0;
};
using Matrices = InTurn<Matrix>;

int CountFor(int n) { return n <= 30 ? 50 : 1; }

Matrices RandomMatrices(int rows, int cols) {
  return {CountFor(rows), [=](int seed) { return RandomMatrix(rows, cols, seed); }};
}

Matrices DefiniteMatrices(int n) {
  return {CountFor(n), [=](int seed) { return DefiniteMatrix(n, seed); }};
}

reference::Table CheckedTable(const Matrix& A) {
  reference::Table table(A.Rows(), A.Cols());
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) table(i, j) = A(i, j);
  }
  return table;
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

// Loops that would take minutes are left out.
constexpr int kLargestPlain = 1000;
constexpr int kLargestReference = 500;

class Suite {
 public:
  /// The small sizes are measured against the plain loops alone.
  Suite(TableReporter& table, bool small) : table_(table), small_(small) {}
  void RegisterTable();
  void RegisterSmallSizes();

 private:
  void Product(int n);
  void Elimination(int n);
  void Inverse(int n);
  void Adjoint(int n);
  void Qr(int n);
  void Definiteness(int n);
  void Hessenberg(int n);
  void Eigen(int n);
  void LeastSquares(int n);
  void SmallTasks(int n);
  void Files(int n);

  TableReporter& table_;
  const bool small_;
};

void Suite::Product(int n) {
  const Matrices A = RandomMatrices(n, n);
  const Matrices B = RandomMatrices(n, n);
  table_.SetOperations("product", n, 2.0 * n * n * n);
  Measure("product", n, "program", [=] { return qmx::Product(A(), B(), unheard); });
  if (n <= kLargestPlain) Measure("product", n, "plain", [=] { return PlainProduct(A(), B()); });
  if (small_) return;
  const auto a = A.As(CheckedTable);
  const auto b = B.As(CheckedTable);
  if (n <= kLargestReference) {
    Measure("product", n, "reference", [=] { return reference::Product(a(), b()); });
  }
#if defined(QMX_BENCH_LIBRARIES)
  Measure("product", n, "openblas", [=] { return OpenBlasProduct(A(), B()); });
  Measure("product", n, "eigen", [=] { return EigenProduct(A(), B()); });
#endif
}

void Suite::Elimination(int n) {
  const Matrices A = RandomMatrices(n, n);
  const Matrices system = RandomMatrices(n, n + 1);
  for (const char* task : {"LU factors", "determinant", "one-shot solution"}) {
    table_.SetOperations(task, n, 2.0 / 3.0 * n * n * n);
  }
  Measure("LU factors", n, "program", [=] { return FactorLu(A(), true, unheard); });
  Measure("LU factors", n, "plain", [=] { return PlainLu(A()); });
  Measure("determinant", n, "program", [=] { return Determinant(A(), unheard); });
  Measure("determinant", n, "plain", [=] { return PlainDeterminant(A()); });
  Measure("one-shot solution", n, "program", [=] { return SolveOneShot(system(), unheard); });
  Measure("one-shot solution", n, "plain", [=] { return PlainSolution(system()); });
  if (small_) return;
  const auto a = A.As(CheckedTable);
  const auto s = system.As(CheckedTable);
  Measure("LU factors", n, "reference", [=] { return reference::FactorLu(a(), true); });
  Measure("determinant", n, "reference", [=] { return reference::Determinant(a()); });
  Measure("one-shot solution", n, "reference", [=] { return reference::SolveOneShot(s()); });
#if defined(QMX_BENCH_LIBRARIES)
  Measure("LU factors", n, "lapack", [=] { return LapackLu(A()); });
  Measure("determinant", n, "lapack", [=] { return LapackLu(A()); });
  Measure("one-shot solution", n, "lapack", [=] { return LapackSolution(system()); });
#endif
}

void Suite::Inverse(int n) {
  const Matrices A = RandomMatrices(n, n);
  for (const char* task : {"inverse", "adjoint by inverse"}) {
    table_.SetOperations(task, n, 2.0 * n * n * n);
  }
  Measure("inverse", n, "program", [=] { return qmx::Inverse(A(), unheard); });
  Measure("inverse", n, "plain", [=] { return PlainInverse(A()); });
  Measure("adjoint by inverse", n, "program", [=] { return AdjointByInverse(A(), unheard); });
  Measure("adjoint by inverse", n, "plain", [=] { return PlainAdjointByInverse(A()); });
  if (small_) return;
  const auto a = A.As(CheckedTable);
  Measure("inverse", n, "reference", [=] { return reference::Inverse(a()); });
  Measure("adjoint by inverse", n, "reference", [=] { return reference::AdjointByInverse(a()); });
#if defined(QMX_BENCH_LIBRARIES)
  Measure("inverse", n, "lapack", [=] { return LapackInverse(A()); });
#endif
}

void Suite::Adjoint(int n) {
  const Matrices A = RandomMatrices(n, n);
  table_.SetOperations("adjoint", n, std::pow(n, 5) / 15);
  Measure("adjoint", n, "program", [=] { return AdjointByCofactors(A(), unheard); });
  Measure("adjoint", n, "plain", [=] { return PlainAdjoint(A()); });
  if (small_) return;
  const auto a = A.As(CheckedTable);
  Measure("adjoint", n, "reference", [=] { return reference::AdjointByCofactors(a()); });
}

void Suite::Qr(int n) {
  const Matrices A = RandomMatrices(n, n);
  table_.SetOperations("QR factors", n, 2.0 * n * n * n);
  Measure("QR factors", n, "program", [=] { return FactorQr(A(), unheard); });
  if (n <= kLargestPlain) Measure("QR factors", n, "plain", [=] { return PlainQr(A()); });
  if (small_) return;
  const auto a = A.As(CheckedTable);
  if (n <= kLargestReference) {
    Measure("QR factors", n, "reference", [=] { return reference::FactorQr(a()); });
  }
#if defined(QMX_BENCH_LIBRARIES)
  Measure("QR factors", n, "lapack", [=] { return LapackQr(A()); });
#endif
}

void Suite::Definiteness(int n) {
  const Matrices A = DefiniteMatrices(n);
  table_.SetOperations("definiteness", n, 2.0 / 3.0 * n * n * n);
  Measure("definiteness", n, "program", [=] { return TestDefiniteness(A(), unheard); });
  Measure("definiteness", n, "plain", [=] { return PlainDefiniteness(A()); });
  if (small_) return;
  const auto a = A.As(CheckedTable);
  Measure("definiteness", n, "reference", [=] { return reference::TestDefiniteness(a()); });
#if defined(QMX_BENCH_LIBRARIES)
  Measure("definiteness", n, "lapack", [=] { return LapackCholesky(A()); });
#endif
}

void Suite::Hessenberg(int n) {
  const Matrices A = RandomMatrices(n, n);
  table_.SetOperations("Hessenberg reduction", n, 7.0 / 6.0 * std::pow(n, 4));
  Measure("Hessenberg reduction", n, "program", [=] {
    Matrix M = A();
    WorkMeter meter(unheard, 1);
    ReduceToHessenberg(M, meter);
    return M;
  });
  if (n <= 100) {
    Measure("Hessenberg reduction", n, "plain", [=] { return PlainHessenberg(A()); });
  }
  const Matrices H = A.As([n](Matrix M) {
    for (int i = 3; i <= n; ++i) std::fill_n(M.Row(i), i - 2, 0.0);
    return M;
  });
  constexpr int kCycles = 10;
  table_.SetOperations("10 Hessenberg cycles", n, kCycles * 1.0 * n * n * n);
  Measure("10 Hessenberg cycles", n, "program", [=] {
    Matrix M = H();
    HessenbergQr work(n);
    WorkMeter meter(unheard, 1);
    for (int cycle = 0; cycle < kCycles; ++cycle) StepHessenbergQr(M, n, work, meter);
    return M;
  });
  Measure("10 Hessenberg cycles", n, "plain", [=] { return PlainCycles(H(), kCycles); });
}

void Suite::LeastSquares(int n) {
  const char* task = "least squares (2n equations)";
  const Matrices tall = RandomMatrices(2 * n, n + 1);
  table_.SetOperations(task, n, (2.0 + 2.0 / 3.0) * n * n * n);
  Measure(task, n, "program", [=] { return SolveLeastSquares(tall(), unheard); });
  if (n <= kLargestReference) {
    Measure(task, n, "plain", [=] { return PlainLeastSquares(tall()); });
  }
  if (small_) return;
  const auto a = tall.As(CheckedTable);
  if (n <= kLargestReference) {
    Measure(task, n, "reference", [=] { return reference::SolveLeastSquares(a()); });
  }
}

void Suite::SmallTasks(int n) {
  const Matrix A = RandomMatrix(n, n);
  const Matrix B = RandomMatrix(n, n);
  Measure("sum", n, "program", [=] { return Sum(A, B, unheard); });
  Measure("transpose", n, "program", [=] { return Transpose(A, unheard); });
  const LuFactors factors = FactorLu(A, true, unheard);
  const Matrix b = RandomMatrix(n, 1);
  Measure("solution by factors", n, "program",
          [=] { return SolveByFactors(factors.L, factors.U, factors.exchanges, b, unheard); });
}

/// The plain ones are the numbers alone, as the standard C library writes and reads them.
void Suite::Files(int n) {
  const Matrix A = RandomMatrix(n, n);
  Measure("writing a file", n, "program", [=] { return MatrixFile(kSlotA, A); });
  Measure("writing a file", n, "plain", [=] { return PlainText(A); });
  const std::string file = MatrixFile(kSlotA, A);
  const std::string text = PlainText(A);
  Measure("reading a file", n, "program", [=] { return ReadMatrixFile(kSlotA, file); });
  Measure("reading a file", n, "plain", [=] {
    Matrix read(n, n);
    ReadPlainText(text, read);
    return read;
  });
}

void Suite::Eigen(int n) {
  const Matrix A = DefiniteMatrix(n);
  const EigenParameters parameters{0.0005, 100, 0.1, 0.001};
  Measure("eigenvalues (100 cycles at most)", n, "program", [=] {
    std::int32_t shiftIndex = 0;
    return FindEigenvalues(A, parameters, shiftIndex, unheard);
  });
  const std::vector<double> start(n, 0.25);
  Measure("eigenvector", n, "program", [=] {
    std::vector<double> x = start;
    return FindEigenvector(A, A(1, 1), 1, parameters, x, unheard);
  });
}

void Suite::RegisterTable() {
  for (const int n : {10, 30, 100, 300, 500, 1000}) Product(n);
  for (const int n : {10, 30, 100, 300, 500, 1000}) Elimination(n);
  for (const int n : {10, 30, 100, 300, 500, 1000}) Inverse(n);
  for (const int n : {10, 30, 100}) Adjoint(n);
  for (const int n : {10, 30, 100, 200, 300, 500, 1000}) Qr(n);
  for (const int n : {10, 30, 100, 300, 1000}) Definiteness(n);
  for (const int n : {10, 30, 100, 300, 500}) Hessenberg(n);
  for (const int n : {10, 30, 100, 300}) Eigen(n);
  for (const int n : {10, 30, 100, 300, 1000}) LeastSquares(n);
  for (const int n : {10, 30, 100, 300, 1000}) SmallTasks(n);
  for (const int n : {10, 30, 100, 300, 1000}) Files(n);
}

void Suite::RegisterSmallSizes() {
  for (int n = 1; n <= 30; ++n) {
    Product(n);
    Elimination(n);
    Inverse(n);
    Adjoint(n);
    Qr(n);
    Definiteness(n);
    Hessenberg(n);
    LeastSquares(n);
  }
}

}  // namespace
}  // namespace qmx::bench

int main(int argc, char** argv) {
  qmx::KeepFreedMemory();  // As the program does, and for all sides.
  // Processor times tell the work of one thread.
  qmx::Team one(1);
  const qmx::UseTeam use(one);
  benchmark::Initialize(&argc, argv);
#if defined(QMX_BENCH_LIBRARIES)
  qmx::bench::UseThreads(1);
#endif
  if (argc > 1 && std::string_view(argv[1]) == "--sizes") {
    qmx::bench::PrintSizes();
    return 0;
  }
  const bool small = argc > 1 && std::string_view(argv[1]) == "--small";
  using Layout = qmx::bench::TableReporter::Layout;
  qmx::bench::TableReporter table(small ? Layout::kSmallSizes : Layout::kTasks,
                                  qmx::bench::MeasurePeak());
  qmx::bench::Suite suite(table, small);
  if (small) {
    suite.RegisterSmallSizes();
  } else {
    suite.RegisterTable();
  }
  benchmark::RunSpecifiedBenchmarks(&table);
  return 0;
}
