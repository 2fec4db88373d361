// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "base/matrix.h"

namespace qmx {

/// One square of a matrix's picture: the element of the largest magnitude among those that it
/// stands for, and where that is, counted from 1. Of several the first one as the matrix is read.
struct PictureCell {
  double value = 0;
  int row = 0;
  int col = 0;
};

/// A matrix as squares, each for a block of elements; the blocks are as equal as can be, and of one
/// element where there is room for all.
class PictureCells {
 public:
  PictureCells() = default;
  /// Makes no more than mostRows x mostCols squares, both at least 1, and lets no large element get
  /// lost: a square shows 0 only where all of its elements are 0.
  PictureCells(const Matrix& matrix, int mostRows, int mostCols);

  int Rows() const { return rows_; }
  int Cols() const { return cols_; }
  int MatrixRows() const { return matrixRows_; }
  bool IsReduced() const { return rows_ != matrixRows_ || cols_ != matrixCols_; }
  /// Square (i, j), counted from 0.
  const PictureCell& At(int i, int j) const {
    return cells_[static_cast<std::size_t>(i) * cols_ + j];
  }
  /// The first row of the elements of the squares in row i, counted from 1; for i = Rows() the one
  /// after the last. The same for columns.
  int FirstRow(int i) const { return First(i, rows_, matrixRows_); }
  int FirstCol(int j) const { return First(j, cols_, matrixCols_); }
  /// The square's row (column) that an element's row (column), counted from 1, belongs to.
  int RowOf(int row) const { return Of(row, rows_, matrixRows_); }
  int ColOf(int col) const { return Of(col, cols_, matrixCols_); }
  /// The largest magnitude; 0 where all elements are 0.
  double Largest() const { return largest_; }
  bool HasZeros() const { return hasZeros_; }

 private:
  static int First(int square, int squares, int elements) {
    return static_cast<int>(static_cast<long long>(square) * elements / squares) + 1;
  }
  static int Of(int element, int squares, int elements);
  void TakeRow(const double* elements, int row, const std::vector<int>& firsts, PictureCell* cells);

  int rows_ = 0;
  int cols_ = 0;
  int matrixRows_ = 0;
  int matrixCols_ = 0;
  double largest_ = 0;
  bool hasZeros_ = false;
  std::vector<PictureCell> cells_;
};

}  // namespace qmx
