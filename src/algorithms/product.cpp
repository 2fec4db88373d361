#include <algorithm>
#include <cstddef>

#include "algorithms/elementary.h"
#include "algorithms/ordered_product.h"

namespace qmx {
namespace {

/// The textbook loop itself, for what is done before the kernel is called.
void MultiplyTiny(const Matrix& A, const Matrix& B, Matrix& C) {
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= B.Cols(); ++j) {
      double sum = 0.0;
      for (int k = 1; k <= A.Cols(); ++k) sum += A(i, k) * B(k, j);
      C(i, j) = sum;
    }
  }
}

/// Rows at a time, for the sake of the progress alone: a fraction of a second's work. Out of line,
/// because tiny products should not have to save its many registers.
[[gnu::noinline]] void MultiplyInStrips(const Matrix& A, const Matrix& B, Matrix& C,
                                        Progress& progress) {
  constexpr double kStepsAtATime = 2.5e9;
  constexpr int kFewestRows = 15 * 16;
  const double stepsInRow = static_cast<double>(A.Cols()) * B.Cols();
  const int rowsAtATime = static_cast<int>(
      std::clamp(kStepsAtATime / std::max(stepsInRow, 1.0), 1.0 * kFewestRows, 1e9));
  for (int i = 1; i <= A.Rows(); i += rowsAtATime) {
    const int rows = std::min(rowsAtATime, A.Rows() - i + 1);
    SetProduct(Part(A, i, 1, rows, A.Cols()), Part(B, 1, 1, B.Rows(), B.Cols()),
               Part(C, i, 1, rows, C.Cols()));
    progress.Report(static_cast<double>(i + rows - 1) / A.Rows());
  }
}

}  // namespace

Matrix Product(const Matrix& A, const Matrix& B, Progress& progress) {
  Matrix C = Matrix::Unset(A.Rows(), B.Cols());
  constexpr std::size_t kTiny = 16;
  if (A.Size() <= kTiny && B.Size() <= kTiny) {
    MultiplyTiny(A, B, C);
  } else {
    MultiplyInStrips(A, B, C, progress);
  }
  return C;
}

}  // namespace qmx
