// SPDX-License-Identifier: MIT
#include "algorithms/determinant.h"

#include "algorithms/elimination.h"
#include "algorithms/work_matrix.h"

namespace qmx {

double Determinant(const Matrix& A, Progress& progress, const BlockSizes& sizes) {
  const int n = A.Rows();
  WorkMeter meter(progress, EliminationWork(n, n, n));
  Matrix W = WorkCopy(A, sizes.work);
  const double det = ReduceToDeterminant(W, meter, sizes.elimination);
  meter.End();
  return det;
}

}  // namespace qmx
