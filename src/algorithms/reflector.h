// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "algorithms/ordered_product.h"
#include "base/vector.h"

namespace qmx {

/// A Householder reflector H = I + β·u·uᵀ with β = -2 / uᵀu that takes a column to a multiple of
/// the first unit vector (Golub & Van Loan, Matrix Computations, 5.1). u is the column with its
/// norm added to the first element, whatever the sign of that is. Elements are counted from 0.
class Reflector {
 public:
  /// For columns of up to so many elements.
  explicit Reflector(int most) : u_(most), scaled_(most) {}

  /// Becomes that of a column of `count` elements that lie `stride` apart, at least 2.
  void Become(const double* column, std::ptrdiff_t stride, int count);
  /// The first element of H times the column; the others count as 0.
  double FirstOfProduct() const;
  /// Writes the part of H whose upper left element is (row, col). Where an element is 0 its sign is
  /// not that of the textbook, which makes no difference to a sum that started at 0.
  void Write(int row, int col, const View& part) const;

 private:
  double Diagonal(int i) const;

  int order_ = 0;
  double first_ = 0;  ///< Of the column.
  double beta_ = 0;
  Vector<double> u_;
  Vector<double> scaled_;  ///< β·u but for its last element, which no element of H needs.
};

}  // namespace qmx
