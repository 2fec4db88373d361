// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include "base/matrix.h"
#include "base/progress.h"

namespace qmx {

/// What a random matrix is made of. An entry is u·(high - low) + low for a fresh u in [0, 1).
struct RandomKind {
  double low = 0;
  double high = 0;
  bool symmetric = false;  ///< One draw for each element on and above the diagonal, mirrored.
  bool integers = false;   ///< Entries are rounded to whole numbers, halves to even.
};

/// Sets every element of a matrix to 1.
void FillOnes(Matrix& created);

/// Sets the diagonal of a matrix of zeros to 1, row by row. False where it has more rows than
/// columns: the diagonal then leaves the matrix, and the entries inside are set.
bool FillIdentity(Matrix& created);

/// Fills a matrix with random entries, row by row; `draw` gives single-precision numbers in [0, 1).
/// False where a symmetric matrix has more columns than rows: the first mirror element outside ends
/// the fill, and the entries before it are set.
bool FillRandom(Matrix& created, const RandomKind& kind, const std::function<float()>& draw,
                Progress& progress);

}  // namespace qmx
