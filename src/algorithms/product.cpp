// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstddef>
#include <functional>

#include "algorithms/elementary.h"
#include "algorithms/ordered_product.h"

namespace qmx {
namespace {

/// Out of line, because tiny products should not have to save its many registers.
[[gnu::noinline]] void MultiplyLarge(const Matrix& A, const Matrix& B, Matrix& C,
                                     Progress& progress) {
  WorkMeter meter(progress, static_cast<double>(A.Rows()) * A.Cols() * B.Cols());
  SetProduct(Part(A, 1, 1, A.Rows(), A.Cols()), Part(B, 1, 1, B.Rows(), B.Cols()),
             Part(C, 1, 1, C.Rows(), C.Cols()), meter);
  meter.End();
}

}  // namespace

Matrix Product(const Matrix& A, const Matrix& B, Progress& progress, const BlockSizes& sizes) {
  Matrix C = Matrix::Unset(A.Rows(), B.Cols());
  const auto tiny = static_cast<std::size_t>(sizes.product.tinyOperand);
  if (A.Size() <= tiny && B.Size() <= tiny) {
    MultiplyTiny(Part(A, 1, 1, A.Rows(), A.Cols()), Part(B, 1, 1, B.Rows(), B.Cols()),
                 Part(C, 1, 1, C.Rows(), C.Cols()), std::plus<>(), true);
  } else {
    MultiplyLarge(A, B, C, progress);
  }
  return C;
}

}  // namespace qmx
