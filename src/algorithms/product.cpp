// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cstddef>
#include <functional>

#include "algorithms/elementary.h"
#include "algorithms/ordered_product.h"
#include "algorithms/product_tiles.h"
#include "algorithms/shared_work.h"

namespace qmx {
namespace {

/// Strips of the larger dimension of C, cut at the edges of tiles.
Strips StripsOfProduct(const Matrix& C, double work, const ProductTaskSizes& sizes) {
  const int all = std::max(C.Rows(), C.Cols());
  // More than one for each member: not all of them come as soon.
  constexpr int kForEach = 2;
  const int most = static_cast<int>(
      std::min<double>(kForEach * SharedTeam().Members(), work / sizes.leastPiece));
  const int step = C.Rows() >= C.Cols() ? CurrentKernels().tileRows : CurrentKernels().tileCols;
  const int even = all / std::max(1, most);
  return StripsOf(1, all, std::max(1, (even + step - 1) / step * step), step);
}

void MultiplyInStrips(const Matrix& A, const Matrix& B, Matrix& C, const Strips& strips,
                      WorkMeter& whole) {
  SharePieces(whole, strips.count, [&](int piece, WorkMeter& meter) {
    const int from = strips.First(piece);
    const int size = strips.Last(piece) - from + 1;
    if (C.Rows() >= C.Cols()) {
      SetProduct(Part(A, from, 1, size, A.Cols()), Part(B, 1, 1, B.Rows(), B.Cols()),
                 Part(C, from, 1, size, C.Cols()), meter);
    } else {
      SetProduct(Part(A, 1, 1, A.Rows(), A.Cols()), Part(B, 1, from, B.Rows(), size),
                 Part(C, 1, from, C.Rows(), size), meter);
    }
  });
}

/// Out of line, because tiny products should not have to save its many registers.
[[gnu::noinline]] void MultiplyLarge(const Matrix& A, const Matrix& B, Matrix& C,
                                     Progress& progress, const ProductTaskSizes& sizes) {
  const double work = static_cast<double>(A.Rows()) * A.Cols() * B.Cols();
  WorkMeter whole(progress, work);
  const ConstView a = Part(A, 1, 1, A.Rows(), A.Cols());
  const ConstView b = Part(B, 1, 1, B.Rows(), B.Cols());
  const View c = Part(C, 1, 1, C.Rows(), C.Cols());
  if (work < sizes.shareFrom) {
    SetProduct(a, b, c, whole);
  } else {
    const Attempt attempt(SharedTeam(), "product", work);
    if (!attempt.IsShared()) {
      SetProduct(a, b, c, whole);
    } else if (!ShareProduct(a, b, c, whole)) {
      MultiplyInStrips(A, B, C, StripsOfProduct(C, work, sizes), whole);
    }
  }
  whole.End();
}

}  // namespace

Matrix Product(const Matrix& A, const Matrix& B, Progress& progress, const BlockSizes& sizes) {
  Matrix C = Matrix::Unset(A.Rows(), B.Cols());
  const auto tiny = static_cast<std::size_t>(sizes.product.tinyOperand);
  if (A.Size() <= tiny && B.Size() <= tiny) {
    MultiplyTiny(Part(A, 1, 1, A.Rows(), A.Cols()), Part(B, 1, 1, B.Rows(), B.Cols()),
                 Part(C, 1, 1, C.Rows(), C.Cols()), std::plus<>(), true);
  } else {
    MultiplyLarge(A, B, C, progress, sizes.product);
  }
  return C;
}

}  // namespace qmx
