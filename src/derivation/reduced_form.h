// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "derivation/exact_matrix.h"
#include "derivation/scribe.h"

namespace qmx {

/// The reduced row echelon form of a matrix and the columns of its pivots, from 1.
struct ReducedForm {
  ReducedForm(int rows, int cols) : matrix(rows, cols) {}
  ExactMatrix matrix;
  std::vector<int> pivots;
  int Rank() const { return static_cast<int>(pivots.size()); }
};

/// The elements of an exact matrix, with their decimals rounded.
ShownMatrix ShowRounded(const ExactMatrix& A);
/// One column of it.
ShownMatrix ShowColumn(const ExactMatrix& A, int col);

/// Tells the Gauss-Jordan elimination of A with exact numbers, column by column; the pivot is the
/// element of the largest magnitude, as in the program's own eliminations (Strang, Introduction to
/// Linear Algebra, 3.2, but for the order of the rows). `result` has the shape of A. Small matrices
/// in full, of larger ones the first and the last two pivots.
void TellReducedForm(const ExactMatrix& A, Scribe& scribe, ReducedForm& result);

/// Tells rank, column space and null space.
void TellSpaces(const ExactMatrix& A, const ReducedForm& reduced, Scribe& scribe);

/// The solutions of A·x = 0 as the columns of a matrix: for each column without a pivot one, in
/// whole numbers without a common divisor. `basis` has as many rows as A columns, and as many
/// columns as A has without a pivot.
void NullSpaceBasis(const ReducedForm& reduced, ExactMatrix& basis);

}  // namespace qmx
