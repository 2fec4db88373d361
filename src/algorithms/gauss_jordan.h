// SPDX-License-Identifier: MIT
#pragma once

#include "algorithms/block_sizes.h"
#include "algorithms/work_meter.h"
#include "base/matrix.h"
#include "base/vector.h"

namespace qmx {

/// Which of several largest magnitudes in a column becomes the pivot.
enum class EqualPivots {
  kUpperRow,     ///< The one that stands highest now, after the exchanges so far.
  kFirstNumber,  ///< The one that stood highest in the beginning.
};

struct JordanExchange {
  bool complete = true;  ///< False where a column had no pivot; W then means nothing.
  int exchanges = 0;
  Vector<int> order;      ///< For each row the number of the row that came here.
  Vector<double> pivots;  ///< In the order of the columns, as many as there are.
  int steps = 0;          ///< Pivots found.
};

/// Gauss-Jordan elimination in the form of exchange steps (Householder, The Theory of Matrices in
/// Numerical Analysis, 5.2) on the leading columns of W, as many as it has rows. The row with the
/// largest magnitude at and below the diagonal of column i is exchanged into row i, and with p =
/// W(i,i): for all other rows k, f = W(k,i) / p, W(k,j) = W(k,j) - f·W(i,j) for j other than i,
/// W(k,i) = -f; then W(i,j) = W(i,j) / p for j other than i, and W(i,i) = 1 / p. In the end W is
/// the inverse with its columns in the order of the rows of the matrix given: column j belongs to
/// row order(j). Adds the cube of the order to the meter, less where a column has no pivot.
JordanExchange ExchangeAllColumns(Matrix& W, EqualPivots rule, WorkMeter& meter,
                                  const ExchangeSizes& sizes = kBlockSizes.exchange);

}  // namespace qmx
