#include "algorithms/product_tiles_inl.h"

namespace qmx {
namespace {

template <class Sign>
void Run(const ProductJob& job) {
  int col = 0;
  // A low block is done in wider tiles, so that there are always enough sums under way.
  if (job.rows <= 2) col = Strips<Sign, 2, 4, Lanes4>(job, col);
  col = Strips<Sign, 6, 2, Lanes4>(job, col);
  col = Strips<Sign, 6, 1, Lanes4>(job, col);
  col = Strips<Sign, 6, 1, Lanes2>(job, col);
  Strips<Sign, 6, 1, Lanes1>(job, col);
}

}  // namespace

const Kernels kAvx2Kernels{6,
                           8,
                           Run<Plus>,
                           Run<Minus>,
                           Eliminate<Lanes4, Lanes1, Lanes2>,
                           Divide<Lanes4>,
                           LargestMagnitude<Lanes4>};

}  // namespace qmx
