// SPDX-License-Identifier: MIT
#include "base/matrix.h"

#include <algorithm>
#include <cassert>

#include "base/fault.h"

namespace qmx {

Matrix::Matrix(int rows, int cols, ElementStorage::Content content)
    : rows_(rows), cols_(cols), data_(Size(), content) {
  assert(rows >= 0 && cols >= 0);
}

Matrix::Matrix(const Matrix& other) : Matrix(Unset(other.rows_, other.cols_)) {
  std::copy_n(other.Data(), other.Size(), Data());
}

Matrix& Matrix::operator=(const Matrix& other) {
  if (this == &other) return *this;
  if (rows_ == other.rows_ && cols_ == other.cols_ && !data_.IsShared()) {
    std::copy_n(other.Data(), other.Size(), Data());
  } else {
    Matrix copy(other);
    Swap(copy);
  }
  return *this;
}

double& Matrix::At(int row, int col) {
  if (!Contains(row, col)) throw RuntimeFault(Fault::kSubscriptOutOfRange);
  return (*this)(row, col);
}

double Matrix::At(int row, int col) const {
  if (!Contains(row, col)) throw RuntimeFault(Fault::kSubscriptOutOfRange);
  return (*this)(row, col);
}

Matrix Matrix::Shared() const {
  Matrix other;
  other.rows_ = rows_;
  other.cols_ = cols_;
  other.data_ = data_;
  return other;
}

void Matrix::MakeOwn() {
  if (!data_.HasOtherOwners()) return;
  Matrix copy(*this);
  Swap(copy);
}

void Matrix::SwapRows(int rowOne, int rowTwo, int firstCol) {
  if (rowOne == rowTwo || firstCol > cols_) return;
  std::swap_ranges(Row(rowOne) + (firstCol - 1), Row(rowOne) + cols_, Row(rowTwo) + (firstCol - 1));
}

void Matrix::Reuse(int rows, int cols) {
  const std::size_t size = static_cast<std::size_t>(rows) * static_cast<std::size_t>(cols);
  if (size > data_.Room() || data_.IsShared()) {
    *this = Unset(rows, cols);
  } else {
    rows_ = rows;
    cols_ = cols;
  }
}

bool operator==(const Matrix& one, const Matrix& two) {
  return one.rows_ == two.rows_ && one.cols_ == two.cols_ &&
         std::equal(one.Data(), one.Data() + one.Size(), two.Data());
}

bool CanAllocate(int rows, int cols, const Memory& memory) {
  // The matrix itself and one more to compute with.
  constexpr std::size_t kCopies = 2;
  const std::size_t spare = memory.Available() / (kCopies * sizeof(double));
  return cols == 0 || static_cast<std::size_t>(rows) <= spare / static_cast<std::size_t>(cols);
}

}  // namespace qmx
