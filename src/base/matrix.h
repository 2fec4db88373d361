#pragma once

#include <cstddef>
#include <memory>

namespace qmx {

/// A dense real matrix of doubles, stored row by row and addressed from 1: element (i, j) with 1 <=
/// i <= Rows() and 1 <= j <= Cols(). A vector is a matrix of one column. A matrix may have no rows
/// or no columns; it then holds nothing.
class Matrix {
 public:
  Matrix() = default;

  /// A rows x cols matrix of zeros. Both counts must be at least 0.
  /// Faults: 7 (out of memory) where the storage cannot be had.
  Matrix(int rows, int cols);

  Matrix(const Matrix& other);
  Matrix(Matrix&& other) noexcept;
  Matrix& operator=(const Matrix& other);
  Matrix& operator=(Matrix&& other) noexcept;
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
  double& operator()(int row, int col) { return data_[Offset(row, col)]; }
  double operator()(int row, int col) const { return data_[Offset(row, col)]; }

  /// Element (row, col). Faults: 9 (subscript out of range) outside the matrix.
  double& At(int row, int col);
  double At(int row, int col) const;

  /// The elements row by row, Size() of them; rows follow each other without a gap.
  double* Data() { return data_.get(); }
  const double* Data() const { return data_.get(); }
  /// The first element of a row: Row(i)[j - 1] is element (i, j).
  double* Row(int row) { return data_.get() + Offset(row, 1); }
  const double* Row(int row) const { return data_.get() + Offset(row, 1); }

  /// Exchanges two rows in columns firstCol..Cols().
  void SwapRows(int rowOne, int rowTwo, int firstCol = 1);

  void Swap(Matrix& other) noexcept;

  /// True if both have the same shape and the same numbers (0 equals -0, a NaN equals nothing).
  friend bool operator==(const Matrix& one, const Matrix& two);

 private:
  struct Release {
    void operator()(double* block) const;
  };

  std::size_t Offset(int row, int col) const {
    return static_cast<std::size_t>(row - 1) * static_cast<std::size_t>(cols_) +
           static_cast<std::size_t>(col - 1);
  }

  int rows_ = 0;
  int cols_ = 0;
  std::unique_ptr<double[], Release> data_;
};

/// True if a rows x cols matrix, together with the copies that showing it and computing with it
/// take, fits into the memory that the machine has to spare now. Both counts must be at least 0.
bool CanAllocate(int rows, int cols);

}  // namespace qmx
