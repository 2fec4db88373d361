// SPDX-License-Identifier: MIT
#include "algorithms/work_matrix.h"

#include <algorithm>

namespace qmx {

Matrix WorkCopy(const Matrix& A, const WorkSizes& sizes) {
  const int cols = WorkColumns(A.Cols(), sizes);
  if (cols == A.Cols()) return A;
  Matrix W = Matrix::Unset(A.Rows(), cols);
  for (int i = 1; i <= A.Rows(); ++i) std::copy_n(A.Row(i), A.Cols(), W.Row(i));
  return W;
}

}  // namespace qmx
