// SPDX-License-Identifier: MIT
#include "algorithms/elementary.h"

#include <algorithm>
#include <cstddef>
#include <functional>

#include "algorithms/product_tiles.h"
#include "algorithms/work_meter.h"

namespace qmx {

namespace {

/// Numbers between two looks at the progress.
constexpr std::size_t kNumbersAtOnce = 1 << 16;

/// Calls change(from, count) for pieces of the numbers from 0 on.
template <class Change>
void InPieces(std::size_t numbers, Progress& progress, const Change& change) {
  WorkMeter meter(progress, kMovedNumber * static_cast<double>(numbers));
  for (std::size_t from = 0; from < numbers; from += kNumbersAtOnce) {
    const std::size_t count = std::min(kNumbersAtOnce, numbers - from);
    change(from, count);
    meter.Add(kMovedNumber * static_cast<double>(count));
  }
  meter.End();
}

template <class Sign>
Matrix ElementByElement(const Matrix& A, const Matrix& B, Progress& progress, Sign sign) {
  Matrix C = Matrix::Unset(A.Rows(), A.Cols());
  InPieces(A.Size(), progress, [&](std::size_t from, std::size_t count) {
    const double* const a = A.Data() + from;
    std::transform(a, a + count, B.Data() + from, C.Data() + from, sign);
  });
  return C;
}

}  // namespace

Matrix Sum(const Matrix& A, const Matrix& B, Progress& progress) {
  return ElementByElement(A, B, progress, std::plus<>());
}

Matrix Difference(const Matrix& A, const Matrix& B, Progress& progress) {
  return ElementByElement(A, B, progress, std::minus<>());
}

double Trace(const Matrix& A) {
  double trace = 0.0;
  for (int k = 1; k <= A.Rows(); ++k) trace += A(k, k);
  return trace;
}

Matrix Transpose(const Matrix& A, Progress& progress) {
  Matrix T = Matrix::Unset(A.Cols(), A.Rows());
  WorkMeter meter(progress, kMovedNumber * static_cast<double>(A.Size()));
  const int columns =
      std::max(kCacheLine, static_cast<int>(kNumbersAtOnce) / std::max(A.Rows(), 1));
  for (int from = 1; from <= A.Cols() && A.Rows() > 0; from += columns) {
    const int count = std::min(columns, A.Cols() - from + 1);
    CurrentKernels().transpose(
        {A.Row(1) + (from - 1), A.Cols(), A.Rows(), count, T.Row(from), T.Cols()});
    meter.Add(kMovedNumber * A.Rows() * count);
  }
  meter.End();
  return T;
}

void ScaleInPlace(Matrix& A, double c, Progress& progress) {
  InPieces(A.Size(), progress, [&](std::size_t from, std::size_t count) {
    double* const a = A.Data() + from;
    std::transform(a, a + count, a, [c](double x) { return c * x; });
  });
}

void ShiftInPlace(Matrix& A, double s) {
  for (int i = 1; A.Contains(i, i); ++i) A(i, i) += s;
}

bool IsSymmetric(const Matrix& A, Progress& progress) {
  const double n = A.Rows();
  WorkMeter meter(progress, kStepDownColumn * n * n / 2);
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = i + 1; j <= A.Rows(); ++j) {
      if (A(i, j) != A(j, i)) return false;
    }
    meter.Add(kStepDownColumn * (n - i));
  }
  meter.End();
  return true;
}

}  // namespace qmx
