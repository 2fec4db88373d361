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

const ProductTiles kSse2Tiles{4, 4, Run<Plus>, Run<Minus>};

}  // namespace qmx
