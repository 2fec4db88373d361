#include "algorithms/determinant.h"

#include "algorithms/elimination.h"

namespace qmx {

double Determinant(Matrix A, Progress& progress, const BlockSizes& sizes) {
  return ReduceToDeterminant(A, progress, sizes.elimination);
}

}  // namespace qmx
