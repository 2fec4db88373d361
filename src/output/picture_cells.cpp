// SPDX-License-Identifier: MIT
#include "output/picture_cells.h"

#include <algorithm>
#include <cmath>

namespace qmx {

PictureCells::PictureCells(const Matrix& matrix, int mostRows, int mostCols)
    : rows_(std::min(matrix.Rows(), mostRows)),
      cols_(std::min(matrix.Cols(), mostCols)),
      matrixRows_(matrix.Rows()),
      matrixCols_(matrix.Cols()),
      cells_(static_cast<std::size_t>(rows_) * cols_) {
  if (cells_.empty()) return;
  std::vector<int> firsts;
  for (int j = 0; j <= cols_; ++j) firsts.push_back(FirstCol(j));
  for (int i = 0; i < rows_; ++i) {
    PictureCell* cells = &cells_[static_cast<std::size_t>(i) * cols_];
    for (int j = 0; j < cols_; ++j) cells[j] = {0, FirstRow(i), firsts[j]};
    for (int row = FirstRow(i); row < FirstRow(i + 1); ++row)
      TakeRow(matrix.Row(row), row, firsts, cells);
  }
  for (const PictureCell& cell : cells_) {
    largest_ = std::max(largest_, std::abs(cell.value));
    hasZeros_ = hasZeros_ || cell.value == 0;
  }
}

void PictureCells::TakeRow(const double* elements, int row, const std::vector<int>& firsts,
                           PictureCell* cells) {
  for (int j = 0; j < cols_; ++j) {
    double largest = std::abs(cells[j].value);
    for (int col = firsts[j]; col < firsts[j + 1]; ++col) {
      const double magnitude = std::abs(elements[col - 1]);
      if (!(magnitude > largest)) continue;
      largest = magnitude;
      cells[j] = {elements[col - 1], row, col};
    }
  }
}

int PictureCells::Of(int element, int squares, int elements) {
  int square = static_cast<int>(static_cast<long long>(element - 1) * squares / elements);
  // Rounding may lead to the square before.
  while (square + 1 < squares && First(square + 1, squares, elements) <= element) ++square;
  return square;
}

}  // namespace qmx
