// SPDX-License-Identifier: MIT
#include "sizes.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <functional>
#include <limits>
#include <utility>
#include <vector>

#include "algorithms/block_sizes.h"
#include "algorithms/definiteness.h"
#include "algorithms/determinant.h"
#include "algorithms/elementary.h"
#include "algorithms/hessenberg.h"
#include "algorithms/inverse.h"
#include "algorithms/linear_system.h"
#include "algorithms/ordered_product.h"
#include "algorithms/product_tiles.h"
#include "algorithms/qr.h"
#include "base/arithmetic.h"
#include "operands.h"

namespace qmx::bench {
namespace {

Progress unheard;

/// What can be changed: the sizes of the algorithms and those of the kernel.
struct AllSizes {
  BlockSizes blocks = kBlockSizes;
  ProductSizes product = CurrentKernels().sizes;
};

struct Trial {
  const char* size;
  const char* task;
  std::vector<int> orders;
  std::function<int&(AllSizes&)> field;
  std::function<void(const Matrix&, const AllSizes&)> run;
  int less = -1;  ///< Instead of the half, where that would tell nothing.
};

void Multiply(const Matrix& A, const AllSizes& sizes) {
  Matrix C = Matrix::Unset(A.Rows(), A.Rows());
  const ConstView a = Part(A, 1, 1, A.Rows(), A.Cols());
  SetProduct(a, a, Part(C, 1, 1, A.Rows(), A.Rows()), &sizes.product);
}

/// Operands that are parts of a matrix whose rows fill pages.
void MultiplyParts(const Matrix& A, const AllSizes& sizes) {
  static const Matrix wide = RandomMatrix(200, 1100);
  const int n = A.Rows();
  Matrix C = Matrix::Unset(n, n);
  SetProduct(Part(wide, 1, 1, n, n), Part(wide, 1, 201, n, n), Part(C, 1, 1, n, n), &sizes.product);
}

void Reduce(const Matrix& A, const AllSizes& sizes) {
  Matrix M = A;
  WorkMeter meter(unheard, 1);
  ReduceToHessenberg(M, meter, sizes.blocks.hessenberg);
}

void TakeCycles(const Matrix& A, const AllSizes& sizes) {
  constexpr int kCycles = 10;
  const int n = A.Rows();
  Matrix M = A;
  for (int i = 3; i <= n; ++i) std::fill_n(M.Row(i), i - 2, 0.0);
  HessenbergQr work(n, sizes.blocks.hessenberg);
  WorkMeter meter(unheard, 1);
  for (int cycle = 0; cycle < kCycles; ++cycle) StepHessenbergQr(M, n, work, meter);
}

/// `shift` is added to the diagonal: a large one leaves nothing to exchange.
void TestSymmetric(const Matrix& A, double shift, const AllSizes& sizes) {
  Matrix M = A;
  for (int i = 1; i <= M.Rows(); ++i) {
    M(i, i) += shift;
    for (int j = 1; j < i; ++j) M(i, j) = M(j, i);
  }
  TestDefiniteness(M, unheard, sizes.blocks);
}

void TestDefinite(const Matrix& A, const AllSizes& sizes) {
  TestSymmetric(A, 2.0 * A.Rows(), sizes);
}

void TestIndefinite(const Matrix& A, const AllSizes& sizes) { TestSymmetric(A, 0, sizes); }

std::vector<Trial> Trials() {
  const auto determinant = [](const Matrix& A, const AllSizes& s) {
    Determinant(A, unheard, s.blocks);
  };
  const auto inverse = [](const Matrix& A, const AllSizes& s) { Inverse(A, unheard, s.blocks); };
  const auto adjoint = [](const Matrix& A, const AllSizes& s) {
    AdjointByCofactors(A, unheard, s.blocks);
  };
  const auto product = [](const Matrix& A, const AllSizes& s) { Product(A, A, unheard, s.blocks); };
  const auto qr = [](const Matrix& A, const AllSizes& s) { FactorQr(A, unheard, s.blocks); };
  const auto leastSquares = [](const Matrix& A, const AllSizes& s) {
    SolveLeastSquares(A, unheard, s.blocks);
  };
  using S = AllSizes&;
  return {
      {"product, depth", "product", {1000}, [](S s) -> int& { return s.product.depth; }, Multiply},
      {"product, rows", "product", {1000}, [](S s) -> int& { return s.product.rows; }, Multiply},
      {"product, cols", "product", {1000}, [](S s) -> int& { return s.product.cols; }, Multiply},
      {"product, packFrom",
       "product",
       {100, 200},
       [](S s) -> int& { return s.product.packFrom; },
       Multiply},
      {"product, packPagesFrom",
       "product of parts",
       {40, 60},
       [](S s) -> int& { return s.product.packPagesFrom; },
       MultiplyParts},
      {"product, tiny", "product", {4, 5}, [](S s) -> int& { return s.product.tiny; }, Multiply},
      {"product task, tinyOperand",
       "product",
       {4, 5},
       [](S s) -> int& { return s.blocks.product.tinyOperand; },
       product},
      {"elimination, smallOrder",
       "determinant",
       {20, 40},
       [](S s) -> int& { return s.blocks.elimination.smallOrder; },
       determinant},
      {"elimination, block",
       "determinant",
       {300, 1000},
       [](S s) -> int& { return s.blocks.elimination.block; },
       determinant},
      {"elimination, panel",
       "determinant",
       {100, 300},
       [](S s) -> int& { return s.blocks.elimination.panel; },
       determinant},
      {"elimination, strip",
       "determinant",
       {300, 1000},
       [](S s) -> int& { return s.blocks.elimination.strip; },
       determinant},
      {"exchange, smallOrder",
       "inverse",
       {20, 40},
       [](S s) -> int& { return s.blocks.exchange.smallOrder; },
       inverse},
      {"exchange, block",
       "inverse",
       {300, 1000},
       [](S s) -> int& { return s.blocks.exchange.block; },
       inverse},
      {"exchange, panel",
       "inverse",
       {100, 300},
       [](S s) -> int& { return s.blocks.exchange.panel; },
       inverse},
      {"exchange, strip",
       "inverse",
       {300, 1000},
       [](S s) -> int& { return s.blocks.exchange.strip; },
       inverse},
      {"exchange, factorGap (0)",
       "inverse",
       {300, 1000},
       [](S s) -> int& { return s.blocks.exchange.factorGap; },
       inverse,
       0},
      {"exchange, shortRow",
       "inverse",
       {7, 10},
       [](S s) -> int& { return s.blocks.exchange.shortRow; },
       inverse},
      {"exchange, scatter (0)",
       "inverse",
       {4, 10},
       [](S s) -> int& { return s.blocks.exchange.scatter; },
       inverse,
       0},
      {"cofactors, smallOrder",
       "adjoint",
       {4, 8},
       [](S s) -> int& { return s.blocks.cofactors.smallOrder; },
       adjoint},
      {"qr, smallOrder",
       "QR factors",
       {12, 24},
       [](S s) -> int& { return s.blocks.qr.smallOrder; },
       qr},
      {"qr, block", "QR factors", {300, 1000}, [](S s) -> int& { return s.blocks.qr.block; }, qr},
      {"qr, tile", "QR factors", {100, 300}, [](S s) -> int& { return s.blocks.qr.tile; }, qr},
      {"hessenberg, tinyReflector",
       "Hessenberg reduction",
       {4},
       [](S s) -> int& { return s.blocks.hessenberg.tinyReflector; },
       Reduce},
      {"hessenberg, packedFrom",
       "Hessenberg reduction",
       {60},
       [](S s) -> int& { return s.blocks.hessenberg.packedFrom; },
       Reduce},
      {"hessenberg, reflectionStrip",
       "Hessenberg reduction",
       {300},
       [](S s) -> int& { return s.blocks.hessenberg.reflectionStrip; },
       Reduce},
      {"hessenberg, reflectionDepth",
       "Hessenberg reduction",
       {300},
       [](S s) -> int& { return s.blocks.hessenberg.reflectionDepth; },
       Reduce},
      {"hessenberg, smallOrder",
       "10 Hessenberg cycles",
       {12, 24},
       [](S s) -> int& { return s.blocks.hessenberg.smallOrder; },
       TakeCycles},
      {"hessenberg, strip",
       "10 Hessenberg cycles",
       {500},
       [](S s) -> int& { return s.blocks.hessenberg.strip; },
       TakeCycles},
      {"hessenberg, tile",
       "10 Hessenberg cycles",
       {100, 300},
       [](S s) -> int& { return s.blocks.hessenberg.tile; },
       TakeCycles},
      {"definiteness, smallOrder",
       "definiteness",
       {36, 72},
       [](S s) -> int& { return s.blocks.definiteness.smallOrder; },
       TestDefinite},
      {"definiteness, steps",
       "indefinite",
       {100, 300},
       [](S s) -> int& { return s.blocks.definiteness.steps; },
       TestIndefinite},
      {"definiteness, group",
       "indefinite",
       {100, 300},
       [](S s) -> int& { return s.blocks.definiteness.group; },
       TestIndefinite},
      {"definiteness, strip",
       "indefinite",
       {300, 500},
       [](S s) -> int& { return s.blocks.definiteness.strip; },
       TestIndefinite},
      {"leastSquares, fewElements",
       "least squares",
       {5, 8},
       [](S s) -> int& { return s.blocks.leastSquares.fewElements; },
       leastSquares},
      {"leastSquares, lowStrip",
       "least squares",
       {200, 400},
       [](S s) -> int& { return s.blocks.leastSquares.lowStrip; },
       leastSquares},
      {"leastSquares, highStrip",
       "least squares",
       {800, 1000},
       [](S s) -> int& { return s.blocks.leastSquares.highStrip; },
       leastSquares},
      {"leastSquares, highFrom",
       "least squares",
       {400, 1000},
       [](S s) -> int& { return s.blocks.leastSquares.highFrom; },
       leastSquares},
  };
}

/// False where a size is larger than what the program was compiled for.
bool Fits(const AllSizes& sizes) {
  return sizes.product.depth * sizes.product.rows <= kMostPackedA &&
         sizes.product.depth * sizes.product.cols <= kMostPackedB &&
         sizes.blocks.elimination.panel <= kPanelColumns &&
         sizes.blocks.exchange.panel <= kPanelColumns &&
         sizes.blocks.exchange.shortRow <= kMostShortRow &&
         sizes.blocks.exchange.scatter <= kMostScattered &&
         sizes.blocks.hessenberg.tinyReflector <= kMostTinyReflector;
}

double Seconds(const Trial& trial, const std::vector<Matrix>& operands, const AllSizes& sizes,
               int repetitions) {
  using Clock = std::chrono::steady_clock;
  ClearArithmeticFaults();
  const Clock::time_point begin = Clock::now();
  for (int k = 0; k < repetitions; ++k) trial.run(operands[k % operands.size()], sizes);
  return std::chrono::duration<double>(Clock::now() - begin).count() / repetitions;
}

void PrintTrial(const Trial& trial, int n) {
  std::vector<Matrix> operands;
  for (int seed = 1; seed <= (n <= 30 ? 50 : 1); ++seed) {
    operands.push_back(RandomMatrix(n, n, seed));
  }
  std::array<AllSizes, 3> sizes;  // As it is, half and double.
  const int tuned = trial.field(sizes[0]);
  trial.field(sizes[1]) = trial.less >= 0 ? trial.less : tuned / 2;
  trial.field(sizes[2]) = tuned * 2;
  std::array<double, 3> best;
  best.fill(std::numeric_limits<double>::infinity());
  // Short, so that some rounds pass undisturbed on a machine that others use, too.
  constexpr double kRound = 0.0003;
  const double once = Seconds(trial, operands, sizes[0], n <= 100 ? 50 : 1);
  const int repetitions = std::max(1, static_cast<int>(kRound / once));
  const int rounds = once > 0.01 ? 20 : 200;
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t k = 0; k < sizes.size(); ++k) {
      if (!Fits(sizes[k])) continue;
      best[k] = std::min(best[k], Seconds(trial, operands, sizes[k], repetitions));
    }
  }
  std::printf("| %s | %d | %s | %d |", trial.size, tuned, trial.task, n);
  for (const std::size_t k : {1, 2}) {
    if (Fits(sizes[k])) {
      std::printf(" %.2f |", best[k] / best[0]);
    } else {
      std::printf(" |");
    }
  }
  std::printf("\n");
}

}  // namespace

void PrintSizes() {
  std::printf("| size | value | task | n | with its half | with its double |\n");
  std::printf("|---|---:|---|---:|---:|---:|\n");
  for (const Trial& trial : Trials()) {
    for (const int n : trial.orders) PrintTrial(trial, n);
  }
}

}  // namespace qmx::bench
