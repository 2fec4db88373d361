#include "algorithms/elementary.h"

#include <algorithm>
#include <cstddef>
#include <functional>

#include "algorithms/product_tiles.h"

namespace qmx {

Matrix Sum(const Matrix& A, const Matrix& B) {
  Matrix C = Matrix::Unset(A.Rows(), A.Cols());
  std::transform(A.Data(), A.Data() + A.Size(), B.Data(), C.Data(), std::plus<>());
  return C;
}

Matrix Difference(const Matrix& A, const Matrix& B) {
  Matrix C = Matrix::Unset(A.Rows(), A.Cols());
  std::transform(A.Data(), A.Data() + A.Size(), B.Data(), C.Data(), std::minus<>());
  return C;
}

double Trace(const Matrix& A) {
  double trace = 0.0;
  for (int k = 1; k <= A.Rows(); ++k) trace += A(k, k);
  return trace;
}

Matrix Transpose(const Matrix& A) {
  Matrix T = Matrix::Unset(A.Cols(), A.Rows());
  CurrentKernels().transpose({A.Data(), A.Cols(), A.Rows(), A.Cols(), T.Data(), T.Cols()});
  return T;
}

void ScaleInPlace(Matrix& A, double c) {
  std::transform(A.Data(), A.Data() + A.Size(), A.Data(), [c](double a) { return c * a; });
}

void ShiftInPlace(Matrix& A, double s) {
  for (int i = 1; A.Contains(i, i); ++i) A(i, i) += s;
}

bool IsSymmetric(const Matrix& A) {
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = i + 1; j <= A.Rows(); ++j) {
      if (A(i, j) != A(j, i)) return false;
    }
  }
  return true;
}

}  // namespace qmx
