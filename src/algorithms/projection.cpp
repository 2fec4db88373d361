#include "algorithms/projection.h"

#include <algorithm>

namespace qmx {

void ProjectionCoefficients(const View& D, const double* squaredNorms, const View& C,
                            std::vector<char>& hasZero) {
  std::fill_n(hasZero.begin(), D.cols, 0);
  for (int k = 0; k < D.rows; ++k) {
    for (int j = 0; j < D.cols; ++j) hasZero[j] |= D(k, j) == 0;
    std::copy_n(&D(k, 0), D.cols, &C(k, 0));
    DivideBy(squaredNorms[k], &C(k, 0), D.cols);
  }
}

}  // namespace qmx
