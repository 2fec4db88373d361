// SPDX-License-Identifier: MIT
#pragma once

#include <arb.h>
#include <arb_mat.h>

#include "base/matrix.h"
#include "proof/watch.h"

namespace qmx {

/// A real number in ball arithmetic (Johansson, Arb: efficient arbitrary-precision midpoint-radius
/// interval arithmetic, 2017): a midpoint and a radius that encloses the exact number. Passes for
/// arb_ptr, so that the routines of Arb take it as it is.
class Ball {
 public:
  Ball() { arb_init(value_); }
  explicit Ball(double exact) : Ball() { arb_set_d(value_, exact); }
  explicit Ball(arb_srcptr other) : Ball() { arb_set(value_, other); }
  Ball(const Ball& other) : Ball() { arb_set(value_, other.value_); }
  Ball(Ball&& other) noexcept : Ball() { arb_swap(value_, other.value_); }
  Ball& operator=(Ball other) noexcept {
    arb_swap(value_, other.value_);
    return *this;
  }
  ~Ball() { arb_clear(value_); }

  operator arb_ptr() { return value_; }
  operator arb_srcptr() const { return value_; }

 private:
  arb_t value_;
};

/// A matrix of balls, row by row, addressed from 0.
class BallMatrix {
 public:
  BallMatrix(int rows, int cols) { arb_mat_init(value_, rows, cols); }
  /// The doubles of A, exactly.
  explicit BallMatrix(const Matrix& A);
  BallMatrix(const BallMatrix& other) : BallMatrix(other.Rows(), other.Cols()) {
    arb_mat_set(value_, other.value_);
  }
  BallMatrix(BallMatrix&& other) noexcept : BallMatrix(0, 0) { arb_mat_swap(value_, other.value_); }
  BallMatrix& operator=(BallMatrix other) noexcept {
    arb_mat_swap(value_, other.value_);
    return *this;
  }
  ~BallMatrix() { arb_mat_clear(value_); }

  int Rows() const { return static_cast<int>(arb_mat_nrows(value_)); }
  int Cols() const { return static_cast<int>(arb_mat_ncols(value_)); }
  arb_ptr operator()(int row, int col) { return arb_mat_entry(value_, row, col); }
  arb_srcptr operator()(int row, int col) const { return arb_mat_entry(value_, row, col); }
  /// The entries of a row; null where the matrix has none.
  arb_ptr Row(int row) { return value_->rows == nullptr ? nullptr : value_->rows[row]; }
  arb_srcptr Row(int row) const { return value_->rows == nullptr ? nullptr : value_->rows[row]; }
  void SwapRows(int one, int two) { arb_mat_swap_rows(value_, nullptr, one, two); }
  BallMatrix Transposed() const;

 private:
  arb_mat_t value_;
};

BallMatrix IdentityBalls(int n);

/// The sum of products of exact numbers, exactly.
void ExactDot(arb_ptr sum, arb_srcptr one, arb_srcptr two, int count);

/// AᵀA of a matrix of doubles, exactly.
BallMatrix GramMatrix(const Matrix& A, const Watch& watch);

/// The end of a ball as a double: no larger than the exact number, or no smaller.
double LowerEnd(const Ball& ball);
double UpperEnd(const Ball& ball);

/// An upper bound of the magnitude as a double, 0 only for an exact zero.
double LargestMagnitude(const Ball& ball);

/// log2 of an upper bound of the magnitude, a bit or two too large at the most; -infinity for zero.
double LogOfMagnitude(arb_srcptr ball);

}  // namespace qmx
