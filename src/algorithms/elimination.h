// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

#include "algorithms/block_sizes.h"
#include "algorithms/work_meter.h"
#include "base/matrix.h"

namespace qmx {

// Gaussian elimination as determinant, LU factorization, systems and eigenvectors have it in
// common.

/// Which element a column is eliminated with. A column that is exactly zero at and below its
/// diagonal has none.
enum class PivotRule {
  kSkipZeroColumns,   ///< The largest magnitude at and below the diagonal; without one, the next.
  kStopAtZeroColumn,  ///< The same, but the elimination ends there.
  kDiagonalElement,   ///< Never exchanges rows. Ends at a zero with a non-zero element below it.
};

/// What an Attempt at a shared elimination is known by; its work is EliminationWork.
inline constexpr std::string_view kEliminationName = "elimination";

struct Elimination {
  bool complete = true;  ///< False where a pivot rule ended it.
  int exchanges = 0;
};

/// Eliminates the leading `columns` columns of W, at most as many as it has rows and columns. With
/// the pivot p of column i moved into row i, the upper one of equals: for each row k below,
/// f = W(k,i) / W(i,i) takes the place of W(k,i), and W(k,j) = W(k,j) - f·W(i,j) for all j > i.
/// Whole rows are exchanged, multipliers included. In `order`, which may be null and otherwise has
/// a number for each row of W, the number of the row that came there is left, from 1. Adds
/// EliminationWork to the meter, less where a pivot rule ends it. The last `gap` columns of W are
/// none of the matrix.
Elimination Eliminate(Matrix& W, int columns, PivotRule rule, WorkMeter& meter,
                      double* order = nullptr,
                      const EliminationSizes& sizes = kBlockSizes.elimination, int gap = 0);

/// Eliminates the columns first..last of a matrix of as many columns as W has rows, once those
/// before are eliminated, with their diagonal elements, and ends at a column where that is 0 or an
/// element below is larger. Returns that column, whose step and all later ones no element has
/// taken, or the one behind the last.
int EliminateWhileLargest(Matrix& W, int first, int last, WorkMeter& meter,
                          const EliminationSizes& sizes = kBlockSizes.elimination);

/// The determinant of the leading columns of W, as many as it has rows, by elimination with partial
/// pivoting, as told at Determinant. W is used up.
double ReduceToDeterminant(Matrix& W, WorkMeter& meter,
                           const EliminationSizes& sizes = kBlockSizes.elimination);

/// (-1)^count: the sign that `count` row exchanges give to a determinant.
inline double AlternatingSign(int count) { return count % 2 == 0 ? 1.0 : -1.0; }

/// The multiplications of the elimination of some leading columns of a rows x cols matrix.
inline double EliminationWork(int rows, int cols, int columns) {
  const double c = columns;
  return c * rows * cols - (c * (c + 1) / 2) * (1.0 * rows + cols) + c * (c + 1) * (2 * c + 1) / 6;
}

/// Raises the fault of RequireElement.
[[noreturn]] void RefuseElement();

/// To be called where a run needs an element that its operand may not have.
/// Faults: 9 where `present` is false, unless the arithmetic so far has a fault of its own.
inline void RequireElement(bool present) {
  if (!present) [[unlikely]]
    RefuseElement();
}

}  // namespace qmx
