#include "algorithms/elementary.h"

#include <algorithm>
#include <cstddef>
#include <functional>

#include "algorithms/ordered_product.h"

namespace qmx {

Matrix Sum(const Matrix& A, const Matrix& B) {
  Matrix C(A.Rows(), A.Cols());
  std::transform(A.Data(), A.Data() + A.Size(), B.Data(), C.Data(), std::plus<>());
  return C;
}

Matrix Difference(const Matrix& A, const Matrix& B) {
  Matrix C(A.Rows(), A.Cols());
  std::transform(A.Data(), A.Data() + A.Size(), B.Data(), C.Data(), std::minus<>());
  return C;
}

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

}  // namespace

Matrix Product(const Matrix& A, const Matrix& B, Progress& progress) {
  Matrix C(A.Rows(), B.Cols());
  constexpr std::size_t kTiny = 16;
  if (A.Size() <= kTiny && B.Size() <= kTiny) {
    MultiplyTiny(A, B, C);
    return C;
  }
  // Rows at a time, for the sake of the progress alone: a fraction of a second's work.
  constexpr double kStepsAtATime = 2.5e9;
  constexpr int kFewestRows = 15 * 16;
  const double stepsInRow = static_cast<double>(A.Cols()) * B.Cols();
  const int rowsAtATime = static_cast<int>(
      std::clamp(kStepsAtATime / std::max(stepsInRow, 1.0), 1.0 * kFewestRows, 1e9));
  for (int i = 1; i <= A.Rows(); i += rowsAtATime) {
    const int rows = std::min(rowsAtATime, A.Rows() - i + 1);
    AddProduct(Part(A, i, 1, rows, A.Cols()), Part(B, 1, 1, B.Rows(), B.Cols()),
               Part(C, i, 1, rows, C.Cols()));
    progress.Report(static_cast<double>(i + rows - 1) / A.Rows());
  }
  return C;
}

double Trace(const Matrix& A) {
  double trace = 0.0;
  for (int k = 1; k <= A.Rows(); ++k) trace += A(k, k);
  return trace;
}

Matrix Transpose(const Matrix& A) {
  Matrix T(A.Cols(), A.Rows());
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) T(j, i) = A(i, j);
  }
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
