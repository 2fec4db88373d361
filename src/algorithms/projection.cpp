#include "algorithms/projection.h"

#include <algorithm>

namespace qmx {

void TakeCoefficients(double squaredNorm, double norm, double* d, double* c, int count) {
  std::copy_n(d, count, c);
  DivideBy(squaredNorm, c, count);
  DivideBy(norm, d, count);
}

}  // namespace qmx
