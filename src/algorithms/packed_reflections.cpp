// SPDX-License-Identifier: MIT
#include "algorithms/packed_reflections.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include "algorithms/product_packing.h"

// With what is left of the matrix below and right of element (k, k) in P, a reflection is
//
//              k            order              1. The members take rows from the job. A row of the
//       +------+------------------------+         upper part is U := U·H.
//       |      |            U           |      2. Rows of the lower part are L := (H·P)·H, where
//     k |      |                        |         H·P is formed in storage of their own.
//       +------+------------------------+      3. What became of them is packed for the next
//       |  s   |            L           |         reflection while it is still at hand.
//       |  0   |                        |
//       +------+------------------------+      P is a packed copy of L. Nobody reads L itself, so
//                                              that rows can be written while others are behind.
//
// So the members meet once in a reflection, and of what another one wrote they read the packed rows
// alone. H is never stored as a matrix: each member writes the parts that it needs of it from the
// vector in the form that the kernel wants, which takes less time than to fetch it from another
// core. Every element is the sum of the textbook loop, term by term.

namespace qmx {

PackedPart::PackedPart(int most) : numbers_(RowSize(most) * most) {}

void PackedPart::Begin(int order, int depth, int tileCols) {
  order_ = order;
  depth_ = depth;
  tileCols_ = tileCols;
}

void PackedPart::PutRow(int row, const double* numbers) {
  const int inBlock = row % depth_;
  const int depth = std::min(depth_, order_ - (row - inBlock));
  double* const block = numbers_.data() + (row - inBlock) * RowSize(order_);
  const auto put = [&](int col, int cols) {
    double* const to = block + std::ptrdiff_t{col} * depth + inBlock * cols;
    std::memcpy(to, numbers + col, cols * sizeof(double));
  };
  int col = 0;
  if (tileCols_ == kCacheLine) {
    for (; col + kCacheLine <= order_; col += kCacheLine) put(col, kCacheLine);
  } else {
    for (; col + tileCols_ <= order_; col += tileCols_) put(col, tileCols_);
  }
  if (col < order_) put(col, order_ - col);
}

PackedReflections::PackedReflections(Matrix& M, const HessenbergSizes& sizes, WorkMeter& meter,
                                     bool shared)
    : M_(M),
      sizes_(sizes),
      meter_(meter),
      kernels_(CurrentKernels()),
      shared_(shared),
      rooms_(shared, {Vector<double>(std::max(
                         M.Rows(), std::min(sizes.reflectionStrip * M.Rows(), kMostPackedA)))}),
      reflector_(M.Rows()),
      column_(M.Rows()),
      part_(M.Rows() - 1),
      nextPart_(shared ? M.Rows() - 1 : 0) {}

void PackedReflections::Reflect(int k) {
  k_ = k;
  order_ = M_.Rows() - k;
  depth_ = DepthFor(order_);
  const bool shares = shared_ && order_ >= sizes_.shareFrom;
  goesAhead_ = shares && order_ > std::max(sizes_.packedFrom, kLeastOrder);
  if (prepared_ != k) Prepare();
  reflector_.Become(column_.From(1), 1, order_);
  subdiagonal_ = reflector_.FirstOfProduct();
  if (goesAhead_) nextPart_.Begin(order_ - 1, DepthFor(order_ - 1), kernels_.tileCols);
  if (shares) {
    const int members = SharedTeam().Members();
    SharePieces(meter_, 2 * members, [&](int piece, WorkMeter& meter) {
      ReflectRows(EndBefore(piece, members) + 1, EndBefore(piece + 1, members), meter);
    });
  } else {
    ReflectRows(1, M_.Rows(), meter_);
  }
  if (!goesAhead_) return;
  std::swap(part_, nextPart_);
  prepared_ = k + 1;
}

/// How many rows the blocks of a packed operand have. One of the reflector has to find its place.
int PackedReflections::DepthFor(int order) const {
  const auto most = static_cast<int>(kMostPackedB / PackedPart::RowSize(order));
  return EvenPart(order, std::clamp(sizes_.reflectionDepth, 1, std::max(1, most)), 1);
}

/// Packs what the reflection before has not.
void PackedReflections::Prepare() {
  part_.Begin(order_, depth_, kernels_.tileCols);
  for (int i = k_ + 1; i <= M_.Rows(); ++i) PutRow(part_, k_, i);
}

/// The last row of the pieces before this one, of which there are two for each member. Lower rows
/// are twice the work of upper ones. The first half of the pieces has seven eighths of it, so that
/// a member tends to keep its rows; the rest is for whoever comes first.
int PackedReflections::EndBefore(int piece, int members) const {
  if (piece == 2 * members) return M_.Rows();
  const int eighths = piece <= members ? 7 * piece : 7 * members + (piece - members);
  const double work = (k_ + 2.0 * order_) * eighths / (8 * members);
  const int tile = kernels_.tileRows;
  if (work <= k_) return static_cast<int>(work) / tile * tile;
  return std::min(M_.Rows(), k_ + static_cast<int>(std::lround((work - k_) / 2 / tile)) * tile);
}

void PackedReflections::ReflectRows(int first, int last, WorkMeter& meter) {
  const int most = std::clamp(kMostPackedA / order_, 1, std::max(1, sizes_.reflectionStrip));
  for (int rows = 0; first <= last; first += rows) {
    const bool upper = first <= k_;
    rows = std::min(most, (upper ? std::min(last, k_) : last) - first + 1);
    if (upper) {
      ReflectUpper(first, rows, meter);
    } else {
      ReflectLower(first, rows, meter);
    }
  }
}

/// M := M·H in rows above the reflected ones.
void PackedReflections::ReflectUpper(int first, int rows, WorkMeter& meter) {
  const View to = Part(M_, first, k_ + 1, rows, order_);
  PackRows(to);
  MultiplyByReflector(to, meter);
}

/// M := (H·M)·H in reflected rows.
void PackedReflections::ReflectLower(int first, int rows, WorkMeter& meter) {
  PackReflectorRows(first - k_ - 1, rows);
  const View product{rooms_.Own().product.From(1), rows, order_, order_, 1};
  Multiply([this](int row, int) { return part_.Block(row); }, product, meter);
  PackRows(product);
  MultiplyByReflector(Part(M_, first, k_ + 1, rows, order_), meter);
  for (int i = first; i < first + rows; ++i) M_(i, k_) = i == k_ + 1 ? subdiagonal_ : 0.0;
  if (!goesAhead_) return;
  for (int i = std::max(first, k_ + 2); i < first + rows; ++i) PutRow(nextPart_, k_ + 1, i);
}

/// Row i of the matrix, as the reflection of column k needs it.
void PackedReflections::PutRow(PackedPart& part, int k, int i) {
  const double* const row = M_.Row(i) + (k - 1);
  column_(i - k) = row[0];
  part.PutRow(i - k - 1, row + 1);
}

/// As first operand, one block of columns after the other.
void PackedReflections::PackRows(const ConstView& rows) {
  ProductJob block;
  block.rows = rows.rows;
  block.aRow = rows.rowStride;
  block.aCol = 1;
  for (int col = 0; col < order_; col += depth_) {
    block.a = rows.first + col;
    block.depth = std::min(depth_, order_ - col);
    PackA(kernels_, block, Packed()->a + std::ptrdiff_t{rows.rows} * col);
  }
}

/// The same of rows of the reflector, which are columns as well.
void PackedReflections::PackReflectorRows(int row, int rows) {
  double* out = Packed()->a;
  for (int col = 0; col < order_; col += depth_) {
    const int depth = std::min(depth_, order_ - col);
    for (int i = 0; i < rows; i += kernels_.tileRows) {
      const int height = std::min(kernels_.tileRows, rows - i);
      reflector_.Write(col, row + i, {out, depth, height, height, 1});
      out += std::ptrdiff_t{height} * depth;
    }
  }
}

/// `depth` rows of the reflector from a row on as second operand, which the member keeps until it
/// needs others.
const double* PackedReflections::PackReflector(int row, int depth) {
  Room& own = rooms_.Own();
  double* out = Packed()->b;
  if (std::exchange(own.column, k_) == k_ && own.row == row) return out;
  own.row = row;
  for (int j = 0; j < order_; j += kernels_.tileCols) {
    const int cols = std::min(kernels_.tileCols, order_ - j);
    reflector_.Write(row, j, {out, depth, cols, cols, 1});
    out += std::ptrdiff_t{cols} * depth;
  }
  return Packed()->b;
}

/// to := A·H, where A are packed rows.
void PackedReflections::MultiplyByReflector(const View& to, WorkMeter& meter) {
  Multiply([this](int row, int depth) { return PackReflector(row, depth); }, to, meter);
}

/// to := A·B, where A are packed rows and blockAt(row, depth) is that block of B.
template <class BlockAt>
void PackedReflections::Multiply(const BlockAt& blockAt, const View& to, WorkMeter& meter) {
  ProductJob block;
  block.c = to.first;
  block.rows = to.rows;
  block.cols = to.cols;
  block.cRow = to.rowStride;
  for (int row = 0; row < order_; row += depth_) {
    block.fromZero = row == 0;
    block.depth = std::min(depth_, order_ - row);
    block.a = Packed()->a + std::ptrdiff_t{to.rows} * row;
    block.b = blockAt(row, block.depth);
    kernels_.addPacked(block);
    meter.Add(1.0 * block.rows * block.cols * block.depth);
  }
}

}  // namespace qmx
