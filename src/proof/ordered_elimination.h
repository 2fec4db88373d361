// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <vector>

#include "proof/ball.h"
#include "proof/watch.h"
#include "proof/whole_numbers.h"

namespace qmx {

/// A = L·U in ball arithmetic with the rows as they stand, for an m x n matrix of any shape
/// (Crout's form; Golub & Van Loan, Matrix Computations, 3.2). A column that is proved to be zero
/// at and below its diagonal is skipped: its multipliers are zero.
///
/// Where a pivot cannot be told from zero, or is zero with something else below it, the factors are
/// known up to there only: the columns of L before that pivot, and the rows of U up to its own.
class OrderedElimination {
 public:
  /// `scale` may be null. Throws what the watch throws.
  OrderedElimination(const BallMatrix& A, const WholeScale* scale, slong bits, const Watch& watch);

  /// Number of columns of L that are known: min(m, n) unless the elimination ended before.
  int Known() const { return known_; }
  /// True if it ended at a pivot that is zero with a number below it that is not, so that there
  /// are no such factors; false where more bits may take it further.
  bool HasNoFactors() const { return hasNoFactors_; }

  /// The first column that was skipped; Known() where none was.
  int FirstZeroPivot() const { return std::min(firstZeroPivot_, known_); }

  /// Element (row, column) of L below its diagonal, for column < Known().
  arb_srcptr Lower(int row, int column) const { return L_(row, column); }
  /// Row `row` of L up to its diagonal, from 0 on.
  arb_srcptr LowerRow(int row) const { return L_.Row(row); }
  /// Element (row, column) of U at and above its diagonal, for row <= Known().
  arb_srcptr Upper(int row, int column) const { return columns_(column, row); }

  /// True if a number is zero that is a quotient with the product of the first `pivots` pivots for
  /// denominator, from the rows of those pivots and row `row`, and their columns and `column`.
  bool IsZeroMinor(arb_srcptr number, int pivots, int row, int column) const;
  /// The same for a number that the scale of `column` alone makes such a quotient.
  bool IsZeroInColumn(arb_srcptr number, int pivots, int column) const;

 private:
  enum class Pivot { kFound, kColumnIsZero, kNone, kUnclear };

  void ReduceColumn(int column);
  Pivot JudgePivot(int column) const;
  void Divide(int column);

  const BallMatrix& A_;
  const WholeScale* scale_;
  slong bits_;
  const Watch& watch_;
  int known_;
  int firstZeroPivot_;
  bool hasNoFactors_ = false;
  BallMatrix L_;                  ///< Row i, column t: multiplier of pivot t in row i.
  BallMatrix columns_;            ///< Row j, column t: element (t, j) of U.
  std::vector<Ball> products_;    ///< Of the first t pivots, skipped ones aside.
  std::vector<slong> exponents_;  ///< Their scale.
};

}  // namespace qmx
