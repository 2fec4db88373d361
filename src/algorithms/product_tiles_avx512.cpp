#include "algorithms/product_tiles_inl.h"

namespace qmx {
namespace {

/// The columns from `col` on, at most V vectors of them, the last one perhaps in part. Where that
/// is a part that a narrower vector fills, the narrower one is quicker.
template <class Sign, int R, int V>
void RightEdge(const ProductJob& job, int col) {
  const int left = job.cols - col - (V - 1) * Lanes8::kWidth;
  if constexpr (V == 1) {
    if (left == Lanes4::kWidth) return Strip<Sign, R, 1, Lanes4>(job, col);
    if (left == Lanes2::kWidth) return Strip<Sign, R, 1, Lanes2>(job, col);
    if (left == Lanes1::kWidth) return Strip<Sign, R, 1, Lanes1>(job, col);
  }
  if (left > 0) {
    Strip<Sign, R, V, Lanes8>(job, col, FirstLanes(left));
  } else if constexpr (V > 1) {
    RightEdge<Sign, R, V - 1>(job, col);
  }
}

/// A low block is done in wider tiles, so that there are always enough sums under way.
template <class Sign>
void Run(const ProductJob& job) {
  if (job.rows <= 4) {
    RightEdge<Sign, 4, 4>(job, Strips<Sign, 4, 4, Lanes8>(job, 0));
  } else if (job.rows <= 8) {
    RightEdge<Sign, 8, 2>(job, Strips<Sign, 8, 2, Lanes8>(job, 0));
  } else {
    RightEdge<Sign, 16, 1>(job, Strips<Sign, 16, 1, Lanes8>(job, 0));
  }
}

}  // namespace

const Kernels kAvx512Kernels{16,
                             8,
                             Run<Plus>,
                             Run<Minus>,
                             Eliminate<Lanes8, Lanes1, Lanes2, Lanes4>,
                             Divide<Lanes8>,
                             LargestMagnitude<Lanes8>};

}  // namespace qmx
