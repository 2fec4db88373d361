#include "algorithms/product_tiles_inl.h"

namespace qmx {
namespace {

template <class Sign>
void Run(const ProductJob& job) {
  const int col = Strips<Sign, 4, 4, Lanes1>(job, 0);
  Strips<Sign, 4, 1, Lanes1>(job, col);
}

}  // namespace

const Kernels kPlainKernels{
    4, 4, Run<Plus>, Run<Minus>, Eliminate<Lanes1>, Divide<Lanes1>, LargestMagnitude<Lanes1>};

}  // namespace qmx
