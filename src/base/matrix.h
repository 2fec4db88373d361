// SPDX-License-Identifier: MIT
#pragma once

#include <cassert>
#include <cstddef>
#include <utility>

#include "base/element_storage.h"
#include "base/memory.h"

namespace qmx {

class MatrixView;

/// A dense real matrix of doubles, stored row by row and addressed from 1: element (i, j) with 1 <=
/// i <= Rows() and 1 <= j <= Cols(). A vector is a matrix of one column. A matrix may have no rows
/// or no columns; it then holds nothing.
class Matrix {
 public:
  Matrix() = default;

  /// A rows x cols matrix of zeros. Both counts must be at least 0.
  /// Faults: 7 (out of memory) where the storage cannot be had.
  Matrix(int rows, int cols) : Matrix(rows, cols, ElementStorage::Content::kZeros) {}

  /// The same for one whose elements are all about to be written: they are whatever is there.
  static Matrix Unset(int rows, int cols) {
    return Matrix(rows, cols, ElementStorage::Content::kUnset);
  }

  Matrix(const Matrix& other);
  Matrix(Matrix&& other) noexcept { Swap(other); }
  Matrix& operator=(const Matrix& other);
  Matrix& operator=(Matrix&& other) noexcept {
    Matrix taken(std::move(other));
    Swap(taken);
    return *this;
  }
  ~Matrix() = default;

  int Rows() const { return rows_; }
  int Cols() const { return cols_; }
  bool IsSquare() const { return rows_ == cols_; }
  bool Contains(int row, int col) const {
    return row >= 1 && row <= rows_ && col >= 1 && col <= cols_;
  }
  /// Number of elements.
  std::size_t Size() const {
    return static_cast<std::size_t>(rows_) * static_cast<std::size_t>(cols_);
  }

  /// Element (row, col), not checked in optimised builds.
  double& operator()(int row, int col) {
    assert(Contains(row, col));
    return data_.Get()[Offset(row, col)];
  }
  double operator()(int row, int col) const {
    assert(Contains(row, col));
    return data_.Get()[Offset(row, col)];
  }

  /// Element (row, col). Faults: 9 (subscript out of range) outside the matrix.
  double& At(int row, int col);
  double At(int row, int col) const;

  /// The elements row by row, Size() of them; rows follow each other without a gap.
  double* Data() { return data_.Get(); }
  const double* Data() const { return data_.Get(); }
  /// The first element of a row: Row(i)[j - 1] is element (i, j).
  double* Row(int row) { return data_.Get() + Offset(row, 1); }
  const double* Row(int row) const { return data_.Get() + Offset(row, 1); }

  /// Exchanges two rows in columns firstCol..Cols().
  void SwapRows(int rowOne, int rowTwo, int firstCol = 1);

  void Swap(Matrix& other) noexcept {
    std::swap(rows_, other.rows_);
    std::swap(cols_, other.cols_);
    data_.Swap(other.data_);
  }

  /// Makes it a rows x cols matrix of any numbers, in the storage that it has where that is large
  /// enough: for work matrices that are used again and again. Both counts must be at least 0.
  /// Faults: 7 (out of memory) where the storage cannot be had.
  void Reuse(int rows, int cols);

  /// The same matrix without a copy of its elements, which both own from now on: before one of them
  /// writes single elements it has to MakeOwn.
  Matrix Shared() const;
  /// Takes a copy of the elements where another matrix owns them, too.
  /// Faults: 7 (out of memory) where the storage cannot be had.
  void MakeOwn();
  /// True if both have the same shape and the elements in the same place.
  bool SharesWith(const Matrix& other) const {
    return rows_ == other.rows_ && cols_ == other.cols_ && data_.Get() == other.data_.Get();
  }
  /// Bytes of memory that the elements take.
  std::size_t Bytes() const { return data_.Room() * sizeof(double); }

  /// These elements for others to read, without a copy of them.
  MatrixView View() const;

  /// True if both have the same shape and the same numbers (0 equals -0, a NaN equals nothing).
  friend bool operator==(const Matrix& one, const Matrix& two);

 private:
  Matrix(int rows, int cols, ElementStorage::Content content);

  std::size_t Offset(int row, int col) const {
    return static_cast<std::size_t>(row - 1) * static_cast<std::size_t>(cols_) +
           static_cast<std::size_t>(col - 1);
  }

  int rows_ = 0;
  int cols_ = 0;
  ElementStorage data_;
};

/// The elements of a matrix as those read them who outlive it: a view keeps them in memory. It sees
/// what is written into single elements of its matrix, until that gets others as a whole, by an
/// assignment, a move or an exchange; then the view keeps the old ones.
class MatrixView {
 public:
  MatrixView() = default;

  int Rows() const { return rows_; }
  int Cols() const { return cols_; }
  /// Element (row, col), not checked in optimised builds.
  double operator()(int row, int col) const {
    return data_.Get()[static_cast<std::size_t>(row - 1) * static_cast<std::size_t>(cols_) +
                       static_cast<std::size_t>(col - 1)];
  }

 private:
  friend class Matrix;
  MatrixView(int rows, int cols, const ElementStorage& data)
      : rows_(rows), cols_(cols), data_(data) {}

  int rows_ = 0;
  int cols_ = 0;
  ElementView data_;
};

inline MatrixView Matrix::View() const { return {rows_, cols_, data_}; }

/// True if a rows x cols matrix, together with the copy that computing with it takes, fits into a
/// memory. Both counts must be at least 0.
bool CanAllocate(int rows, int cols, const Memory& memory);

}  // namespace qmx
