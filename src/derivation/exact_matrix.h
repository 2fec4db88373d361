// SPDX-License-Identifier: MIT
#pragma once

#include <flint/fmpq_mat.h>

#include <optional>

#include "base/matrix.h"
#include "derivation/traced.h"

namespace qmx {

/// A matrix of exact numbers for the library's own algorithms.
class ExactMatrix {
 public:
  ExactMatrix(int rows, int cols) { fmpq_mat_init(value_, rows, cols); }
  ExactMatrix(const ExactMatrix&) = delete;
  ExactMatrix& operator=(const ExactMatrix&) = delete;
  ~ExactMatrix() { fmpq_mat_clear(value_); }
  fmpq_mat_struct* Get() { return value_; }
  const fmpq_mat_struct* Get() const { return value_; }
  int Rows() const { return static_cast<int>(fmpq_mat_nrows(value_)); }
  int Cols() const { return static_cast<int>(fmpq_mat_ncols(value_)); }
  /// Element (row, col), from 1.
  fmpq* At(int row, int col) { return fmpq_mat_entry(value_, row - 1, col - 1); }
  const fmpq* At(int row, int col) const { return fmpq_mat_entry(value_, row - 1, col - 1); }

 private:
  fmpq_mat_t value_;
};

/// Takes the exact values of the leading block of so many rows and columns. False where one of them
/// is not known.
bool TakeExact(const Elements<Traced>& elements, ExactMatrix& matrix);

/// The determinant of the leading n x n block without rounding; nothing where an element is not
/// known exactly.
std::optional<Rational> ExactDeterminant(const Elements<Traced>& elements, int n);

}  // namespace qmx
