#pragma once

#include "base/matrix.h"
#include "base/progress.h"

namespace qmx {

// The steps of Gaussian elimination that determinant, LU factorization, systems and eigenvectors
// have in common. The multipliers are kept below the diagonal; who does not need them ignores them.

/// To be called where a run needs an element that its operand may not have.
/// Faults: 9 where `present` is false, unless the arithmetic so far has a fault of its own.
void RequireElement(bool present);

/// The element that a column is eliminated with.
struct Pivot {
  int row = 0;
  double magnitude = 0;
};

/// The largest magnitude of column `col` of W at and below the diagonal, the upper one of equals.
/// Row `col` must exist. Faults: 9 where W has no column `col`.
Pivot FindPivot(const Matrix& W, int col);

/// Subtracts multiples of row `i` from the rows below, so that column `i` would become zero there:
/// for k > i the multiplier f = W(k,i) / W(i,i) takes the place of W(k,i), and
/// W(k,j) = W(k,j) - f·W(i,j) for all j > i.
void EliminateBelow(Matrix& W, int i);

/// The determinant of a square W by elimination with partial pivoting, as told at Determinant. W is
/// used up.
double ReduceToDeterminant(Matrix& W, Progress& progress);

/// (-1)^count: the sign that `count` row exchanges give to a determinant.
inline double AlternatingSign(int count) { return count % 2 == 0 ? 1.0 : -1.0; }

/// The part of a cubic amount of work that is done when `done` of `all` columns are eliminated.
inline double EliminatedPart(int done, int all) {
  const double left = 1.0 - static_cast<double>(done) / all;
  return 1.0 - left * left * left;
}

}  // namespace qmx
