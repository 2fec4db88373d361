// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "proof/ball.h"
#include "proof/watch.h"
#include "proof/whole_numbers.h"

namespace qmx {

/// Gaussian elimination with row exchanges in ball arithmetic, column by column with dot products
/// (Crout's form; Golub & Van Loan, Matrix Computations, 3.2). Every pivot is proved to differ
/// from zero. A column in which no element below the earlier pivots can be proved to do so gets no
/// pivot and is free; the others go on without it.
///
/// The radii grow by about a bit per column; whoever needs narrow results starts with enough bits.
class PivotedElimination {
 public:
  enum class Numbers {
    kEnclosed,
    kApproximate,  ///< Midpoints alone: nothing is proved, in a fraction of the time.
  };

  /// `scale` belongs to A and may be null; then only what is zero by itself is proved to be zero.
  /// A is kept by reference. Throws what the watch throws.
  PivotedElimination(const BallMatrix& A, const WholeScale* scale, slong bits, const Watch& watch,
                     Numbers numbers = Numbers::kEnclosed);

  int Rank() const { return static_cast<int>(pivotColumns_.size()); }
  bool IsRegular() const { return Rank() == A_.Rows() && Rank() == A_.Cols(); }
  slong Bits() const { return bits_; }
  /// Columns without a pivot, and whether each of them is proved to depend on the columns before.
  const std::vector<int>& FreeColumns() const { return freeColumns_; }
  bool FreeColumnsAreProved() const { return freeAreProved_; }
  /// Row k of the eliminated matrix was row RowOrder()[k] of A.
  const std::vector<int>& RowOrder() const { return rowOrder_; }

  /// The product of the pivots, without the sign of the exchanges, and with it: the determinant of
  /// a regular matrix.
  Ball PivotProduct() const;
  Ball Determinant() const;

  /// Row k of the result solves A·x = b for b = row k of `rightSides`. A is regular.
  BallMatrix Solve(const BallMatrix& rightSides) const;

  /// The vector x with A·x = 0 and x(f) = 1 for the one free column f, where A is square, has one
  /// pivot less than rows, and is known to be singular. A row.
  BallMatrix NullVector() const;

  /// True if unknown j of a solution is zero. `exponent` is the one that the right-hand side's
  /// column has, once the scale of the rows has been taken into account.
  bool IsZeroUnknown(arb_srcptr unknown, int j, slong exponent) const;

 private:
  void EliminateColumn(int column);
  void ReduceEntry(int row, int column, arb_ptr entry);
  void ChoosePivot(int column);
  void AcceptPivot(int column, int row);
  void BackSubstitute(arb_ptr right) const;
  void Multiply(arb_ptr number, const Ball& factor) const;
  void Dot(arb_ptr result, arb_srcptr initial, arb_srcptr one, arb_srcptr two, int count) const;

  const BallMatrix& A_;
  const WholeScale* scale_;
  slong bits_;
  const Watch& watch_;
  bool isApproximate_;
  BallMatrix L_;        ///< Row i, column t: multiplier of pivot t in row i.
  BallMatrix columns_;  ///< Row j, column t: element (t, j) of U.
  BallMatrix upper_;    ///< U without the free columns, row by row.
  std::vector<int> rowOrder_;
  std::vector<int> pivotColumns_;
  std::vector<int> freeColumns_;
  bool freeAreProved_ = true;
  std::vector<Ball> products_;    ///< Of the first t pivots.
  std::vector<slong> exponents_;  ///< Their scale.
};

/// Bits to begin with where a square matrix of order n is inverted or solved.
slong FirstBits(int n);

}  // namespace qmx
