#include <algorithm>
#include <cstddef>
#include <functional>

#include "algorithms/elementary.h"
#include "algorithms/ordered_product.h"

namespace qmx {
namespace {

/// Rows at a time, for the sake of the progress alone: a fraction of a second's work. Out of line,
/// because tiny products should not have to save its many registers.
[[gnu::noinline]] void MultiplyInStrips(const Matrix& A, const Matrix& B, Matrix& C,
                                        const ProductTaskSizes& sizes, Progress& progress) {
  const double stepsInRow = static_cast<double>(A.Cols()) * B.Cols();
  const int rowsAtATime = static_cast<int>(
      std::clamp(sizes.stepsInStrip / std::max(stepsInRow, 1.0), 1.0 * sizes.fewestRows, 1e9));
  for (int i = 1; i <= A.Rows(); i += rowsAtATime) {
    const int rows = std::min(rowsAtATime, A.Rows() - i + 1);
    SetProduct(Part(A, i, 1, rows, A.Cols()), Part(B, 1, 1, B.Rows(), B.Cols()),
               Part(C, i, 1, rows, C.Cols()));
    progress.Report(static_cast<double>(i + rows - 1) / A.Rows());
  }
}

}  // namespace

Matrix Product(const Matrix& A, const Matrix& B, Progress& progress, const BlockSizes& sizes) {
  Matrix C = Matrix::Unset(A.Rows(), B.Cols());
  const auto tiny = static_cast<std::size_t>(sizes.product.tinyOperand);
  if (A.Size() <= tiny && B.Size() <= tiny) {
    MultiplyTiny(Part(A, 1, 1, A.Rows(), A.Cols()), Part(B, 1, 1, B.Rows(), B.Cols()),
                 Part(C, 1, 1, C.Rows(), C.Cols()), std::plus<>(), true);
  } else {
    MultiplyInStrips(A, B, C, sizes.product, progress);
  }
  return C;
}

}  // namespace qmx
