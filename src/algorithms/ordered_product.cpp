#include "algorithms/ordered_product.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <functional>
#include <type_traits>

#include "algorithms/product_tiles.h"

namespace qmx {
namespace {

// Sizes of the packed blocks: a panel of B has to stay in the first cache while the panels of a
// block of A, which has to stay in the second, run past it.
constexpr int kDepth = 384;
constexpr int kBlockRows = 240;  // A multiple of 16, 6 and 4, the heights of the tiles.
constexpr int kBlockCols = 1024;

// Below, copying an operand costs more than its strides do.
constexpr int kPackFrom = 160;

// The same where the rows of both lie in memory pages of their own, which all have to be looked up.
constexpr int kPackPagesFrom = 48;
constexpr std::ptrdiff_t kPage = 512;

// Rows that lie a multiple of this apart compete for the same places of the first cache, of which
// there are fewer than a tile has rows.
constexpr std::ptrdiff_t kCompetingStride = 512;

constexpr int kTallestTile = 16;

const Kernels& KernelsOf(InstructionSet set) {
#if defined(__x86_64__)
  switch (set) {
    case InstructionSet::kAvx512:
      return kAvx512Kernels;
    case InstructionSet::kAvx2:
      return kAvx2Kernels;
    case InstructionSet::kSse2:
      return kSse2Kernels;
    case InstructionSet::kPlain:
      return kPlainKernels;
  }
#endif
  static_cast<void>(set);
  return kPlainKernels;
}

const Kernels*& Current() {
  static const Kernels* kernels = &KernelsOf(BestInstructionSet());
  return kernels;
}

/// Copies `depth` columns of `height` numbers that lie together.
template <class Height>
void PackColumns(const double* from, const ProductJob& job, Height height, double* out) {
  for (int k = 0; k < job.depth; ++k, from += job.aCol, out += height) {
    std::copy_n(from, static_cast<int>(height), out);
  }
}

/// Copies a rows x depth block of A so that its elements lie in the order of their use: panels of
/// the tile height, in each panel column by column. The last panel may be lower.
void PackA(const Kernels& kernels, const ProductJob& job, double* out) {
  constexpr std::integral_constant<int, kTallestTile> kUsual;
  for (int i = 0; i < job.rows; i += kernels.tileRows) {
    const int height = std::min(kernels.tileRows, job.rows - i);
    const double* from = job.a + i * job.aRow;
    if (job.aRow != 1) {
      kernels.transpose({from, job.aRow, height, job.depth, out, height});
    } else if (height == kUsual) {
      PackColumns(from, job, kUsual, out);
    } else {
      PackColumns(from, job, height, out);
    }
    out += static_cast<std::ptrdiff_t>(height) * job.depth;
  }
}

using Run = void (*)(const ProductJob&);

/// The size of the even parts, each at most `most` and a multiple of `step` but for the last, that
/// `all` falls into.
int EvenPart(int all, int most, int step) {
  const int parts = (all + most - 1) / most;
  const int part = (all + parts - 1) / parts;
  return std::min(most, (part + step - 1) / step * step);
}

/// Copies a panel of `cols` columns of B row by row.
void PackPanel(const double* b, std::ptrdiff_t bRow, int depth, int cols, double* out) {
  constexpr int kUsual = 8;
  if (cols == kUsual) {
    for (int k = 0; k < depth; ++k)
      std::memcpy(out + k * kUsual, b + k * bRow, kUsual * sizeof(double));
  } else {
    for (int k = 0; k < depth; ++k) std::copy_n(b + k * bRow, cols, out + k * cols);
  }
}

/// Copies a depth x cols block of B as panels of the tile width, in each panel row by row. The last
/// panel may be narrower.
void PackB(const ProductJob& job, int tileCols, double* out) {
  for (int j = 0; j < job.cols; j += tileCols) {
    const int cols = std::min(tileCols, job.cols - j);
    PackPanel(job.b + j, job.bRow, job.depth, cols, out);
    out += static_cast<std::ptrdiff_t>(cols) * job.depth;
  }
}

/// Blocks of the products in increasing order, for each of them blocks of columns, and for each of
/// these blocks of rows.
void RunPacked(const Kernels& kernels, Run runBlock, const ProductJob& job) {
  alignas(64) static double packedA[kBlockRows * kDepth];
  alignas(64) static double packedB[kDepth * kBlockCols];
  const int depth = EvenPart(job.depth, kDepth, 1);
  const int rows = EvenPart(job.rows, kBlockRows, kernels.tileRows);
  const int cols = EvenPart(job.cols, kBlockCols, kernels.tileCols);
  ProductJob block = job;
  for (int k = 0; k < job.depth; k += depth) {
    block.depth = std::min(depth, job.depth - k);
    block.fromZero = job.fromZero && k == 0;
    for (int j = 0; j < job.cols; j += cols) {
      block.cols = std::min(cols, job.cols - j);
      block.b = job.b + k * job.bRow + j;
      PackB(block, kernels.tileCols, packedB);
      block.b = packedB;
      for (int i = 0; i < job.rows; i += rows) {
        block.rows = std::min(rows, job.rows - i);
        block.a = job.a + i * job.aRow + k * job.aCol;
        block.c = job.c + i * job.cRow + j;
        PackA(kernels, block, packedA);
        block.a = packedA;
        runBlock(block);
      }
    }
  }
}

/// Copies panels of A before they are used, for rows that compete with each other.
void RunByPackedPanels(const Kernels& kernels, Run run, const ProductJob& job) {
  alignas(64) static double packed[kTallestTile * kDepth];
  ProductJob panel = job;
  panel.a = packed;
  panel.aRow = 1;
  for (int i = 0; i < job.rows; i += kernels.tileRows) {
    panel.rows = std::min(kernels.tileRows, job.rows - i);
    panel.aCol = panel.rows;
    panel.c = job.c + i * job.cRow;
    kernels.transpose({job.a + i * job.aRow, job.aRow, panel.rows, job.depth, packed, panel.rows});
    run(panel);
  }
}

void RunSized(const Kernels& kernels, Run run, Run runPacked, const ConstView& A,
              const ConstView& B, const View& C, bool fromZero) {
  const ProductJob job{A.first,     B.first,     C.first,     C.rows,      C.cols,  A.cols,
                       A.rowStride, A.colStride, B.rowStride, C.rowStride, fromZero};
  const bool inPages = std::min(std::max(job.aRow, job.aCol), job.bRow) >= kPage;
  const int packFrom = inPages ? kPackPagesFrom : kPackFrom;
  if (std::min(job.rows, job.cols) >= packFrom && job.depth > 0) {
    RunPacked(kernels, runPacked, job);
  } else if (job.aRow % kCompetingStride == 0 && job.rows > kernels.tileRows / 2 &&
             job.depth <= kDepth) {
    RunByPackedPanels(kernels, run, job);
  } else {
    run(job);
  }
}

[[maybe_unused]] bool FitTogether(const ConstView& A, const ConstView& B, const View& C) {
  return A.rows == C.rows && A.cols == B.rows && B.cols == C.cols && B.colStride == 1 &&
         C.colStride == 1 && (A.rowStride == 1 || A.colStride == 1);
}

bool IsTiny(const ConstView& A, const View& C) {
  constexpr int kTiny = 64;
  return static_cast<long>(C.rows) * C.cols * A.cols <= kTiny;
}

/// C = C sign A·B, or 0 sign A·B.
template <class Sign>
void Multiply(const ConstView& A, const ConstView& B, const View& C, Sign sign, Run Kernels::*run,
              Run Kernels::*runPacked, bool fromZero) {
  assert(FitTogether(A, B, C));
  if (IsTiny(A, C)) {
    MultiplyTiny(A, B, C, sign, fromZero);
  } else {
    RunSized(*Current(), Current()->*run, Current()->*runPacked, A, B, C, fromZero);
  }
}

}  // namespace

const Kernels& CurrentKernels() { return *Current(); }

void AddProduct(ConstView A, ConstView B, View C) {
  Multiply(A, B, C, std::plus<>(), &Kernels::add, &Kernels::addPacked, false);
}

void SetProduct(ConstView A, ConstView B, View C) {
  Multiply(A, B, C, std::plus<>(), &Kernels::add, &Kernels::addPacked, true);
}

void SubtractProduct(ConstView A, ConstView B, View C) {
  Multiply(A, B, C, std::minus<>(), &Kernels::subtract, &Kernels::subtractPacked, false);
}

void EliminateLongRows(const double* pivot, double* rows, std::ptrdiff_t stride, int count,
                       int left, int right) {
  Current()->eliminate({pivot, rows, stride, count, left, right});
}

void DivideBy(double divisor, double* x, int count) { Current()->divide(x, count, divisor); }

void DivideManyByEach(const double* divisors, double* x, int count) {
  Current()->divideByEach(x, count, divisors);
}

double LargestMagnitude(const double* x, int count) {
  return Current()->largestMagnitude(x, count);
}

bool HasInstructionSet(InstructionSet set) {
#if defined(__x86_64__)
  switch (set) {
    case InstructionSet::kAvx512:
      return __builtin_cpu_supports("avx512f");
    case InstructionSet::kAvx2:
      return __builtin_cpu_supports("avx2");
    case InstructionSet::kSse2:
    case InstructionSet::kPlain:
      return true;
  }
#endif
  return set == InstructionSet::kPlain;
}

InstructionSet BestInstructionSet() {
  for (const InstructionSet set :
       {InstructionSet::kAvx512, InstructionSet::kAvx2, InstructionSet::kSse2}) {
    if (HasInstructionSet(set)) return set;
  }
  return InstructionSet::kPlain;
}

void UseInstructionSet(InstructionSet set) {
  assert(HasInstructionSet(set));
  Current() = &KernelsOf(set);
}

}  // namespace qmx
