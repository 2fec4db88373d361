// SPDX-License-Identifier: MIT
#include "algorithms/determinant.h"

#include "algorithms/elimination.h"

namespace qmx {

double Determinant(Matrix A, Progress& progress, const BlockSizes& sizes) {
  const int n = A.Rows();
  WorkMeter meter(progress, EliminationWork(n, n, n));
  const double det = ReduceToDeterminant(A, meter, sizes.elimination);
  meter.End();
  return det;
}

}  // namespace qmx
