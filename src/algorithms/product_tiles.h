#pragma once

#include <cstddef>

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

/// What one instruction set does best in its own way. All give the same bits.
struct Kernels {
  int tileRows;  ///< Rows of the largest tile. A packed operand comes in panels of this height.
  int tileCols;  ///< Columns of the largest tile.
  void (*add)(const ProductJob& job);
  void (*subtract)(const ProductJob& job);
  /// In each row f = row[0] / pivot[0] takes the place of row[0], and row[j] = row[j] - f·pivot[j].
  void (*eliminate)(const EliminationStep& step);
  /// x[k] = x[k] / divisor for all of them.
  void (*divide)(double* x, int count, double divisor);
  /// The largest magnitude; a NaN counts only in the first place, and then it is the result.
  double (*largestMagnitude)(const double* x, int count);
};

extern const Kernels kPlainKernels;
extern const Kernels kSse2Kernels;
extern const Kernels kAvx2Kernels;
extern const Kernels kAvx512Kernels;

}  // namespace qmx
