// SPDX-License-Identifier: MIT
#include "algorithms/ordered_product.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <functional>

#include "algorithms/product_packing.h"
#include "algorithms/product_tiles.h"
#include "algorithms/shared_work.h"
#include "base/team.h"

namespace qmx {
namespace {

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

using Run = void (*)(const ProductJob&);

/// The multiplications of a job.
double WorkOf(const ProductJob& job) {
  return static_cast<double>(job.rows) * job.cols * job.depth;
}

void Note(WorkMeter* meter, const ProductJob& done) {
  if (meter != nullptr) meter->Add(WorkOf(done));
}

/// Blocks of the products in increasing order, for each of them blocks of columns, and for each of
/// these blocks of rows.
void RunPacked(const Kernels& kernels, const ProductSizes& sizes, PackedOperands& packed,
               Run runBlock, const ProductJob& job, WorkMeter* meter) {
  const int depth = EvenPart(job.depth, sizes.depth, 1);
  const int rows = EvenPart(job.rows, sizes.rows, kernels.tileRows);
  const int cols = EvenPart(job.cols, sizes.cols, kernels.tileCols);
  ProductJob block = job;
  for (int k = 0; k < job.depth; k += depth) {
    block.depth = std::min(depth, job.depth - k);
    block.fromZero = job.fromZero && k == 0;
    for (int j = 0; j < job.cols; j += cols) {
      block.cols = std::min(cols, job.cols - j);
      block.b = job.b + k * job.bRow + j;
      PackB(block, kernels.tileCols, packed.b);
      block.b = packed.b;
      for (int i = 0; i < job.rows; i += rows) {
        block.rows = std::min(rows, job.rows - i);
        block.a = job.a + i * job.aRow + k * job.aCol;
        block.c = job.c + i * job.cRow + j;
        PackA(kernels, block, packed.a);
        block.a = packed.a;
        runBlock(block);
        Note(meter, block);
      }
    }
  }
}

/// Where a piece begins among so many tiles, of which there are two for each member: the first half
/// of the pieces has three quarters of the tiles, so that members that come or end at different
/// times still share the rest.
int FirstTile(int tiles, int piece, int members) {
  const int quarters = piece <= members ? 3 * piece : 3 * members + (piece - members);
  return static_cast<int>(static_cast<std::int64_t>(tiles) * quarters / (4 * members));
}

/// Runs work(first, end, meter), counted in tiles, for all of these pieces.
template <class Work>
void ShareTiles(WorkMeter& meter, int all, int tile, const Work& work) {
  const int tiles = (all + tile - 1) / tile;
  const int members = std::max(1, SharedTeam().Members());
  SharePieces(meter, 2 * members, [&](int piece, WorkMeter& own) {
    const int first = FirstTile(tiles, piece, members) * tile;
    const int end = std::min(FirstTile(tiles, piece + 1, members) * tile, all);
    if (first < end) work(first, end, own);
  });
}

/// Rows of a block whose B is packed for all members; each packs its part of A for itself. `b` is
/// where the block's B lies unpacked, for a member without memory.
void RunRows(const Kernels& kernels, const ProductSizes& sizes, const ProductJob& block,
             const double* b, int first, int end, WorkMeter& meter) {
  PackedOperands* const own = Packed();
  const int rows = EvenPart(end - first, sizes.rows, kernels.tileRows);
  ProductJob part = block;
  for (int i = first; i < end; i += rows) {
    part.rows = std::min(rows, end - i);
    part.a = block.a + i * block.aRow;
    part.c = block.c + i * block.cRow;
    if (own == nullptr) {
      part.b = b;
      kernels.add(part);
    } else {
      PackA(kernels, part, own->a);
      part.a = own->a;
      kernels.addPacked(part);
    }
    Note(&meter, part);
  }
}

/// As RunPacked for sums: the members pack a block of B together, and then share its rows.
void SharePacked(const Kernels& kernels, const ProductSizes& sizes, const ProductJob& job,
                 WorkMeter& meter) {
  double* const packed = Packed()->b;
  const int depth = EvenPart(job.depth, sizes.depth, 1);
  const int cols = EvenPart(job.cols, sizes.cols, kernels.tileCols);
  ProductJob block = job;
  for (int k = 0; k < job.depth; k += depth) {
    block.depth = std::min(depth, job.depth - k);
    block.fromZero = job.fromZero && k == 0;
    block.a = job.a + k * job.aCol;
    for (int j = 0; j < job.cols; j += cols) {
      block.cols = std::min(cols, job.cols - j);
      block.c = job.c + j;
      const double* const b = job.b + k * job.bRow + j;
      ShareTiles(meter, block.cols, kernels.tileCols, [&](int first, int end, WorkMeter&) {
        ProductJob part = block;
        part.b = b + first;
        part.cols = end - first;
        PackB(part, kernels.tileCols, packed + static_cast<std::ptrdiff_t>(first) * block.depth);
      });
      block.b = packed;
      // Half a tile takes half the time of a whole one, and parts of them are more even.
      ShareTiles(meter, job.rows, kernels.tileRows / 2, [&](int first, int end, WorkMeter& own) {
        RunRows(kernels, sizes, block, b, first, end, own);
      });
    }
  }
}

/// Copies panels of A before they are used, for rows that compete with each other.
void RunByPackedPanels(const Kernels& kernels, const ProductSizes& sizes, double* packed, Run run,
                       const ProductJob& job, WorkMeter* meter) {
  const int depth = EvenPart(job.depth, sizes.depth, 1);
  assert(kernels.tileRows * depth <= kMostPackedA);
  ProductJob panel = job;
  panel.a = packed;
  panel.aRow = 1;
  for (int k = 0; k < job.depth; k += depth) {
    panel.depth = std::min(depth, job.depth - k);
    panel.fromZero = job.fromZero && k == 0;
    panel.b = job.b + k * job.bRow;
    for (int i = 0; i < job.rows; i += kernels.tileRows) {
      panel.rows = std::min(kernels.tileRows, job.rows - i);
      panel.aCol = panel.rows;
      panel.c = job.c + i * job.cRow;
      kernels.transpose({job.a + i * job.aRow + k * job.aCol, job.aRow, panel.rows, panel.depth,
                         packed, panel.rows});
      run(panel);
      Note(meter, panel);
    }
  }
}

/// The operands as they lie, some whole panels of A at a time.
void RunUnpacked(const Kernels& kernels, Run run, const ProductJob& job, WorkMeter* meter) {
  if (meter == nullptr || WorkOf(job) <= WorkMeter::kMostAtOnce) {
    run(job);
    return Note(meter, job);
  }
  const double panels = WorkMeter::kMostAtOnce / WorkOf(job) * job.rows / kernels.tileRows;
  const int rows = std::max(1, static_cast<int>(panels)) * kernels.tileRows;
  ProductJob part = job;
  for (int i = 0; i < job.rows; i += rows) {
    part.rows = std::min(rows, job.rows - i);
    part.a = job.a + i * job.aRow;
    part.c = job.c + i * job.cRow;
    run(part);
    Note(meter, part);
  }
}

[[maybe_unused]] bool FitPacked(const Kernels& kernels, const ProductSizes& sizes) {
  return std::min({sizes.depth, sizes.rows, sizes.cols}) >= 1 &&
         std::max(sizes.rows, kernels.tileRows) * sizes.depth <= kMostPackedA &&
         sizes.cols * sizes.depth <= kMostPackedB;
}

ProductJob JobOf(const ConstView& A, const ConstView& B, const View& C, bool fromZero) {
  return {A.first,     B.first,     C.first,     C.rows,      C.cols,  A.cols,
          A.rowStride, A.colStride, B.rowStride, C.rowStride, fromZero};
}

bool IsPacked(const ProductJob& job, const ProductSizes& sizes) {
  const bool inPages = std::min(std::max(job.aRow, job.aCol), job.bRow) >= sizes.page;
  return std::min(job.rows, job.cols) >= (inPages ? sizes.packPagesFrom : sizes.packFrom);
}

void RunSized(const Kernels& kernels, const ProductSizes& sizes, Run run, Run runPacked,
              const ConstView& A, const ConstView& B, const View& C, bool fromZero,
              WorkMeter* meter) {
  assert(FitPacked(kernels, sizes));
  const ProductJob job = JobOf(A, B, C, fromZero);
  const bool packs = IsPacked(job, sizes);
  const bool packsPanels = !packs && job.aCol == 1 && job.aRow % sizes.competingStride == 0 &&
                           job.rows > kernels.tileRows / 2;
  PackedOperands* const packed = packs || packsPanels ? Packed() : nullptr;
  if (packed == nullptr) {
    RunUnpacked(kernels, run, job, meter);
  } else if (packs) {
    RunPacked(kernels, sizes, *packed, runPacked, job, meter);
  } else {
    RunByPackedPanels(kernels, sizes, packed->a, run, job, meter);
  }
}

[[maybe_unused]] bool FitTogether(const ConstView& A, const ConstView& B, const View& C) {
  return A.rows == C.rows && A.cols == B.rows && B.cols == C.cols && B.colStride == 1 &&
         C.colStride == 1 && (A.rowStride == 1 || A.colStride == 1);
}

/// True for a product without any multiplication, too: the other ways begin with the first.
bool IsTiny(const ConstView& A, const View& C, const ProductSizes& sizes) {
  return static_cast<std::int64_t>(C.rows) * C.cols * A.cols <= sizes.tiny;
}

/// C = C sign A·B, or 0 sign A·B.
template <class Sign>
void Multiply(const ConstView& A, const ConstView& B, const View& C, const ProductSizes* given,
              Sign sign, Run Kernels::*run, Run Kernels::*runPacked, bool fromZero,
              WorkMeter* meter = nullptr) {
  assert(FitTogether(A, B, C));
  const Kernels& kernels = *Current();
  const ProductSizes& sizes = given == nullptr ? kernels.sizes : *given;
  if (IsTiny(A, C, sizes)) {
    MultiplyTiny(A, B, C, sign, fromZero);
  } else {
    RunSized(kernels, sizes, kernels.*run, kernels.*runPacked, A, B, C, fromZero, meter);
  }
}

}  // namespace

const Kernels& CurrentKernels() { return *Current(); }

void AddProduct(ConstView A, ConstView B, View C, const ProductSizes* sizes) {
  Multiply(A, B, C, sizes, std::plus<>(), &Kernels::add, &Kernels::addPacked, false);
}

void AddProduct(ConstView A, ConstView B, View C, WorkMeter& meter) {
  Multiply(A, B, C, nullptr, std::plus<>(), &Kernels::add, &Kernels::addPacked, false, &meter);
}

void SetProduct(ConstView A, ConstView B, View C, const ProductSizes* sizes) {
  Multiply(A, B, C, sizes, std::plus<>(), &Kernels::add, &Kernels::addPacked, true);
}

void SetProduct(ConstView A, ConstView B, View C, WorkMeter& meter) {
  Multiply(A, B, C, nullptr, std::plus<>(), &Kernels::add, &Kernels::addPacked, true, &meter);
}

bool ShareProduct(ConstView A, ConstView B, View C, WorkMeter& meter, const ProductSizes* given) {
  assert(FitTogether(A, B, C) && Team::Member() == 0);
  const Kernels& kernels = *Current();
  const ProductSizes& sizes = given == nullptr ? kernels.sizes : *given;
  assert(FitPacked(kernels, sizes));
  const ProductJob job = JobOf(A, B, C, true);
  if (IsTiny(A, C, sizes) || !IsPacked(job, sizes)) return false;
  SharePacked(kernels, sizes, job, meter);
  return true;
}

void SubtractProduct(ConstView A, ConstView B, View C, const ProductSizes* sizes) {
  Multiply(A, B, C, sizes, std::minus<>(), &Kernels::subtract, &Kernels::subtractPacked, false);
}

void SubtractProduct(ConstView A, ConstView B, View C, WorkMeter& meter) {
  Multiply(A, B, C, nullptr, std::minus<>(), &Kernels::subtract, &Kernels::subtractPacked, false,
           &meter);
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
