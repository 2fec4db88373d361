#include "algorithms/ordered_product.h"

#include <algorithm>
#include <cassert>
#include <functional>

#include "algorithms/product_tiles.h"

namespace qmx {
namespace {

// Sizes of the packed blocks: a panel of B has to stay in the first cache while the panels of a
// block of A, which has to stay in the second, run past it.
constexpr int kDepth = 256;
constexpr int kBlockRows = 240;  // A multiple of 16, 6 and 4, the heights of the tiles.
constexpr int kMostTileCols = 8;

// Below, copying an operand costs more than its strides do.
constexpr int kPackFrom = 160;

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

/// Copies a rows x depth block of A so that its elements lie in the order of their use: panels of
/// the tile height, in each panel column by column. The last panel may be lower.
void PackA(const ProductJob& job, int tileRows, double* out) {
  for (int i = 0; i < job.rows; i += tileRows) {
    const int height = std::min(tileRows, job.rows - i);
    const double* from = job.a + i * job.aRow;
    for (int k = 0; k < job.depth; ++k, from += job.aCol) {
      for (int r = 0; r < height; ++r) *out++ = from[r * job.aRow];
    }
  }
}

void PackB(const double* b, std::ptrdiff_t bRow, int depth, int cols, double* out) {
  for (int k = 0; k < depth; ++k, b += bRow, out += cols) std::copy_n(b, cols, out);
}

/// For operands so small that choosing a way would take longer than the work.
template <class Sign>
void RunTiny(const ConstView& A, const ConstView& B, const View& C, Sign sign) {
  for (int i = 0; i < C.rows; ++i) {
    const double* const a = A.first + i * A.rowStride;
    double* const c = C.first + i * C.rowStride;
    for (int j = 0; j < C.cols; ++j) {
      double sum = c[j];
      for (int k = 0; k < A.cols; ++k) sum = sign(sum, a[k * A.colStride] * B(k, j));
      c[j] = sum;
    }
  }
}

using Run = void (*)(const ProductJob&);

/// One block of at most kBlockRows rows and kDepth products, from packed operands.
void RunBlock(const Kernels& kernels, Run run, const ProductJob& block) {
  alignas(64) static double packedA[kBlockRows * kDepth];
  alignas(64) static double packedB[kDepth * kMostTileCols];
  PackA(block, kernels.tileRows, packedA);
  ProductJob tile = block;
  tile.b = packedB;
  for (int j = 0; j < block.cols; j += kernels.tileCols) {
    tile.cols = std::min(kernels.tileCols, block.cols - j);
    tile.bRow = tile.cols;
    PackB(block.b + j, block.bRow, block.depth, tile.cols, packedB);
    tile.a = packedA;
    for (int i = 0; i < block.rows; i += kernels.tileRows) {
      tile.rows = std::min(kernels.tileRows, block.rows - i);
      tile.aRow = 1;
      tile.aCol = tile.rows;
      tile.c = block.c + i * block.cRow + j;
      run(tile);
      tile.a += static_cast<std::ptrdiff_t>(tile.rows) * tile.depth;
    }
  }
}

/// Blocks of the products in increasing order, and for each of them blocks of rows.
void RunPacked(const Kernels& kernels, Run run, const ProductJob& job) {
  for (int k = 0; k < job.depth; k += kDepth) {
    for (int i = 0; i < job.rows; i += kBlockRows) {
      ProductJob block = job;
      block.depth = std::min(kDepth, job.depth - k);
      block.rows = std::min(kBlockRows, job.rows - i);
      block.a += i * job.aRow + k * job.aCol;
      block.b += k * job.bRow;
      block.c += i * job.cRow;
      RunBlock(kernels, run, block);
    }
  }
}

void RunSized(const Kernels& kernels, Run run, const ConstView& A, const ConstView& B,
              const View& C) {
  const ProductJob job{A.first, B.first,     C.first,     C.rows,      C.cols,
                       A.cols,  A.rowStride, A.colStride, B.rowStride, C.rowStride};
  if (std::min(job.rows, job.cols) >= kPackFrom) {
    RunPacked(kernels, run, job);
  } else {
    run(job);
  }
}

[[maybe_unused]] bool FitTogether(const ConstView& A, const ConstView& B, const View& C) {
  return A.rows == C.rows && A.cols == B.rows && B.cols == C.cols && B.colStride == 1 &&
         C.colStride == 1;
}

bool IsTiny(const ConstView& A, const View& C) {
  constexpr int kTiny = 64;
  return static_cast<long>(C.rows) * C.cols * A.cols <= kTiny;
}

}  // namespace

void AddProduct(ConstView A, ConstView B, View C) {
  assert(FitTogether(A, B, C));
  if (IsTiny(A, C)) {
    RunTiny(A, B, C, std::plus<>());
  } else {
    RunSized(*Current(), Current()->add, A, B, C);
  }
}

void SubtractProduct(ConstView A, ConstView B, View C) {
  assert(FitTogether(A, B, C));
  if (IsTiny(A, C)) {
    RunTiny(A, B, C, std::minus<>());
  } else {
    RunSized(*Current(), Current()->subtract, A, B, C);
  }
}

void EliminateLongRows(const double* pivot, double* rows, std::ptrdiff_t stride, int count,
                       int left, int right) {
  Current()->eliminate({pivot, rows, stride, count, left, right});
}

void DivideBy(double divisor, double* x, int count) { Current()->divide(x, count, divisor); }

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
