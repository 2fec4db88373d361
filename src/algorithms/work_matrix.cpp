// SPDX-License-Identifier: MIT
#include "algorithms/work_matrix.h"

#include <algorithm>

#include "algorithms/shared_work.h"
#include "base/progress.h"

namespace qmx {

Matrix WorkCopy(const Matrix& A, const WorkSizes& sizes) {
  const int cols = WorkColumns(A.Cols(), sizes);
  const bool shares = 1.0 * A.Rows() * A.Cols() >= sizes.shareFrom;
  if (cols == A.Cols() && !shares) return A;
  Matrix W = Matrix::Unset(A.Rows(), cols);
  const auto copyRow = [&](int i, WorkMeter&) { std::copy_n(A.Row(i), A.Cols(), W.Row(i)); };
  WorkMeter unheard(NoProgress(), 0);
  if (shares) {
    ShareStripsOfRows(unheard, A.Rows(), copyRow);
  } else {
    for (int i = 1; i <= A.Rows(); ++i) copyRow(i, unheard);
  }
  return W;
}

}  // namespace qmx
