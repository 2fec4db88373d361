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

/// Strips of C, cut along its larger dimension at the edges of tiles.
struct Strips {
  bool ofRows = false;
  int size = 0;  ///< Rows or columns of each but the last.
  int count = 0;
};

Strips StripsOf(const Matrix& C, double work, const ProductTaskSizes& sizes) {
  // More than one for each member: on a busy machine not all of them come as far.
  constexpr int kForEach = 2;
  const bool ofRows = C.Rows() >= C.Cols();
  const int all = std::max(C.Rows(), C.Cols());
  if (work < sizes.shareFrom) return {ofRows, all, 1};
  const double wanted =
      std::min<double>(kForEach * SharedTeam().Members(), work / sizes.leastPiece);
  const int tile = ofRows ? CurrentKernels().tileRows : CurrentKernels().tileCols;
  const int least = (all + static_cast<int>(wanted) - 1) / std::max(static_cast<int>(wanted), 1);
  const int size = std::min(all, (least + tile - 1) / tile * tile);
  return {ofRows, size, (all + size - 1) / size};
}

/// Out of line, because tiny products should not have to save its many registers.
[[gnu::noinline]] void MultiplyLarge(const Matrix& A, const Matrix& B, Matrix& C,
                                     Progress& progress, const ProductTaskSizes& sizes) {
  const double work = static_cast<double>(A.Rows()) * A.Cols() * B.Cols();
  WorkMeter whole(progress, work);
  const Strips strips = StripsOf(C, work, sizes);
  SharePieces(whole, strips.count, [&](int piece, WorkMeter& meter) {
    const int from = piece * strips.size + 1;
    const int all = strips.ofRows ? C.Rows() : C.Cols();
    const int size = std::min(strips.size, all - from + 1);
    if (strips.ofRows) {
      SetProduct(Part(A, from, 1, size, A.Cols()), Part(B, 1, 1, B.Rows(), B.Cols()),
                 Part(C, from, 1, size, C.Cols()), meter);
    } else {
      SetProduct(Part(A, 1, 1, A.Rows(), A.Cols()), Part(B, 1, from, B.Rows(), size),
                 Part(C, 1, from, C.Rows(), size), meter);
    }
  });
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
