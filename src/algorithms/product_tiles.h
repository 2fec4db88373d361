// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "algorithms/block_sizes.h"

namespace qmx {

/// C ± A·B on raw storage, for one instruction set. B and C have a column stride of 1.
struct ProductJob {
  const double* a = nullptr;
  const double* b = nullptr;
  double* c = nullptr;
  int rows = 0;   ///< Of A and C.
  int cols = 0;   ///< Of B and C.
  int depth = 0;  ///< Columns of A, rows of B.
  std::ptrdiff_t aRow = 0;
  std::ptrdiff_t aCol = 0;
  std::ptrdiff_t bRow = 0;
  std::ptrdiff_t cRow = 0;
  bool fromZero = false;  ///< 0 ± A·B instead, whatever is in C.
};

/// One step of an elimination, in `count` rows that lie `stride` apart. Both pointers are to the
/// elements in the column of the step.
struct EliminationStep {
  const double* pivot = nullptr;
  double* rows = nullptr;
  std::ptrdiff_t stride = 0;
  int count = 0;
  int left = 0;   ///< Columns before that of the step which take part.
  int right = 0;  ///< Columns behind.
};

/// One step of an elimination in `count` rows of a panel whose columns lie together. In each row k
/// f = column[k] / pivot takes the place of column[k], and other[r][k] = other[r][k] -
/// multiplier[r]·f in each of the `others` other columns, at most kPanelColumns - 1. All columns
/// lie at the same distance from the beginning of a cache line, and the lines are the panel's
/// alone: what else is in them may be read and written back as it was.
struct PanelStep {
  double* column = nullptr;
  double pivot = 0;
  int count = 0;
  int others = 0;
  double* other[kPanelColumns - 1];  ///< As many as there are.
  double multiplier[kPanelColumns - 1];
};

/// `count` steps in their own pivot rows, at most kPanelColumns: row i takes step s with the factor
/// factors[i·factorRow + s·factorCol].
struct PivotRowsJob {
  const double* factors = nullptr;
  std::ptrdiff_t factorRow = 0;
  std::ptrdiff_t factorCol = 0;
  double* rows = nullptr;
  std::ptrdiff_t stride = 0;
  int count = 0;
  int cols = 0;
  const double* pivots = nullptr;  ///< For exchange steps alone, as the others below.
  double* kept = nullptr;
  std::ptrdiff_t keptStride = 0;
};

/// to[j·toStride + i] = from[i·fromStride + j].
struct TransposeJob {
  const double* from = nullptr;
  std::ptrdiff_t fromStride = 0;
  int rows = 0;  ///< Of what is read.
  int cols = 0;
  double* to = nullptr;
  std::ptrdiff_t toStride = 0;
};

/// What one instruction set does best in its own way. All give the same bits.
struct Kernels {
  ProductSizes sizes;
  int tileRows;  ///< Rows of the largest tile. A packed operand comes in panels of this height.
  int tileCols;  ///< Columns of the largest tile.
  void (*add)(const ProductJob& job);
  void (*subtract)(const ProductJob& job);
  /// The same with A in packed panels of the tile height, column by column, and B in packed panels
  /// of the tile width, row by row. The last panels may be smaller. No strides of A and B.
  void (*addPacked)(const ProductJob& block);
  void (*subtractPacked)(const ProductJob& block);
  /// In each row f = row[0] / pivot[0] takes the place of row[0], and row[j] = row[j] - f·pivot[j].
  void (*eliminate)(const EliminationStep& step);
  /// x[k] = x[k] / divisor for all of them.
  void (*divide)(double* x, int count, double divisor);
  /// x[k] = x[k] / divisors[k] for all of them.
  void (*divideByEach)(double* x, int count, const double* divisors);
  /// The largest magnitude; a NaN counts only in the first place, and then it is the result.
  double (*largestMagnitude)(const double* x, int count);
  /// The first place of a magnitude, else `count`.
  int (*placeOf)(double magnitude, const double* x, int count);
  /// Exchanges `count` numbers.
  void (*swap)(double* x, double* y, int count);
  void (*transpose)(const TransposeJob& job);
  /// Returns the largest magnitude that comes about in the first of the other columns, as
  /// largestMagnitude does; 0 where there is none.
  double (*panelStep)(const PanelStep& step);
  /// Row i takes the steps of the rows above it.
  void (*eliminatePivotRows)(const PivotRowsJob& job);
  /// Row i takes the steps above it, is kept, is divided by its pivot, and takes those below.
  void (*exchangePivotRows)(const PivotRowsJob& job);
};

/// Those in use.
const Kernels& CurrentKernels();

extern const Kernels kPlainKernels;
extern const Kernels kSse2Kernels;
extern const Kernels kAvx2Kernels;
extern const Kernels kAvx512Kernels;

}  // namespace qmx
