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

/// How one instruction set does it.
struct ProductTiles {
  int rows;  ///< Rows of the largest tile. A packed operand comes in panels of this height.
  int cols;  ///< Columns of the largest tile.
  void (*add)(const ProductJob& job);
  void (*subtract)(const ProductJob& job);
};

extern const ProductTiles kPlainTiles;
extern const ProductTiles kSse2Tiles;
extern const ProductTiles kAvx2Tiles;
extern const ProductTiles kAvx512Tiles;

}  // namespace qmx
