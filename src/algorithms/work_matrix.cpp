// SPDX-License-Identifier: MIT
#include "algorithms/work_matrix.h"

#include <algorithm>

#include "algorithms/shared_work.h"
#include "base/team.h"

namespace qmx {

Matrix WorkCopy(const Matrix& A, const WorkSizes& sizes) {
  const int cols = WorkColumns(A.Cols(), sizes);
  const bool shares = 1.0 * A.Rows() * A.Cols() >= sizes.shareFrom;
  if (cols == A.Cols() && !shares) return A;
  Matrix W = Matrix::Unset(A.Rows(), cols);
  const auto copyRow = [&](int i) { std::copy_n(A.Row(i), A.Cols(), W.Row(i)); };
  if (!shares) {
    for (int i = 1; i <= A.Rows(); ++i) copyRow(i);
    return W;
  }
  const int pieces = 4 * SharedTeam().Members();
  const Strips strips = StripsOf(1, A.Rows(), (A.Rows() + pieces - 1) / pieces);
  SharedTeam().Share(
      strips.count,
      [&](int piece) {
        for (int i = strips.First(piece); i <= strips.Last(piece); ++i) copyRow(i);
      },
      [] {});
  return W;
}

}  // namespace qmx
