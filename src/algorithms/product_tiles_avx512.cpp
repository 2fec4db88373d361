#include "algorithms/product_tiles_inl.h"

namespace qmx {
namespace {

template <class Sign>
void Run(const ProductJob& job) {
  int col = 0;
  // A low block is done in wider tiles, so that there are always enough sums under way.
  if (job.rows <= 4) col = Strips<Sign, 4, 4, Lanes8>(job, col);
  if (job.rows <= 8) col = Strips<Sign, 8, 2, Lanes8>(job, col);
  col = Strips<Sign, 16, 1, Lanes8>(job, col);
  col = Strips<Sign, 16, 1, Lanes4>(job, col);
  col = Strips<Sign, 16, 1, Lanes2>(job, col);
  Strips<Sign, 16, 1, Lanes1>(job, col);
}

}  // namespace

const Kernels kAvx512Kernels{
    16, 8, Run<Plus>, Run<Minus>, Divide<Lanes8>, LargestMagnitude<Lanes8>};

}  // namespace qmx
