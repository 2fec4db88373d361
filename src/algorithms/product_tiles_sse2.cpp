#include "algorithms/product_tiles_inl.h"

namespace qmx {
namespace {

template <class Sign>
void Run(const ProductJob& job) {
  int col = Strips<Sign, 4, 2, Lanes2>(job, 0);
  col = Strips<Sign, 4, 1, Lanes2>(job, col);
  Strips<Sign, 4, 1, Lanes1>(job, col);
}

}  // namespace

const Kernels kSse2Kernels{4,
                           4,
                           Run<Plus>,
                           Run<Minus>,
                           Eliminate<Lanes2, Lanes1>,
                           Divide<Lanes2>,
                           LargestMagnitude<Lanes2>};

}  // namespace qmx
