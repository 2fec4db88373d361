// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

#include "algorithms/block_sizes.h"
#include "algorithms/elimination_steps.h"
#include "algorithms/ordered_product.h"
#include "algorithms/product_tiles.h"
#include "algorithms/reflector.h"
#include "algorithms/shared_work.h"
#include "base/matrix.h"
#include "base/vector.h"

namespace qmx {

/// The part of a matrix that a reflection multiplies from the left, packed as the kernel wants its
/// second operand: blocks of `depth` rows, in each of them panels of columns.
class PackedPart {
 public:
  PackedPart() = default;
  /// For parts of up to this order.
  explicit PackedPart(int most);

  /// From now on it holds a part of this order, whose rows are to be put.
  void Begin(int order, int depth, int tileCols);
  void PutRow(int row, const double* numbers);
  /// What begins with a row that a block begins with.
  const double* Block(int row) const { return numbers_.data() + row * RowSize(order_); }
  /// Numbers that a row takes: all blocks begin with a cache line.
  static std::ptrdiff_t RowSize(int order) {
    return (std::ptrdiff_t{order} + kCacheLine - 1) / kCacheLine * kCacheLine;
  }

 private:
  std::vector<double, LineAllocator<double>> numbers_;
  int order_ = 0;
  int depth_ = 1;
  int tileCols_ = 1;
};

/// Large reflections M := H·M·H of one matrix, each for a column that is not yet zero below its
/// subdiagonal. Where they are shared, the team's members must have packed operands.
class PackedReflections {
 public:
  PackedReflections(Matrix& M, const HessenbergSizes& sizes, WorkMeter& meter, bool shared);

  /// The least order of a reflection that can be done in this way.
  static constexpr int kLeastOrder = 2;

  /// Column k, which comes to end with its subdiagonal element.
  void Reflect(int k);

 private:
  /// What a member works with.
  struct Room {
    Vector<double> product;  ///< Some rows of H·M.
    int column = 0;          ///< Whose reflector is packed, and the first row of the packed block.
    int row = 0;
  };

  int DepthFor(int order) const;
  void Prepare();
  void PutRow(PackedPart& part, int k, int i);
  int EndBefore(int piece, int members) const;
  void ReflectRows(int first, int last, WorkMeter& meter);
  void ReflectUpper(int first, int rows, WorkMeter& meter);
  void ReflectLower(int first, int rows, WorkMeter& meter);
  void PackRows(const ConstView& rows);
  void PackReflectorRows(int row, int rows);
  const double* PackReflector(int row, int depth);
  void MultiplyByReflector(const View& to, WorkMeter& meter);
  template <class BlockAt>
  void Multiply(const BlockAt& blockAt, const View& to, WorkMeter& meter);

  Matrix& M_;
  const HessenbergSizes& sizes_;
  WorkMeter& meter_;
  const Kernels& kernels_;
  const bool shared_;
  PerMember<Room> rooms_;
  Reflector reflector_;
  Vector<double> column_;  ///< The next one to be reflected, below the diagonal.
  PackedPart part_;        ///< What lies below and right of the diagonal element of column_.
  PackedPart nextPart_;    ///< The same of the next column, where members go ahead.
  int prepared_ = 0;       ///< The column that these two are for.

  // Of the running reflection.
  int k_ = 0;
  int order_ = 0;
  int depth_ = 0;
  double subdiagonal_ = 0;
  bool goesAhead_ = false;
};

}  // namespace qmx
