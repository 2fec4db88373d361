#include "algorithms/determinant.h"

#include "algorithms/elimination.h"

namespace qmx {

double Determinant(Matrix A, Progress& progress) { return ReduceToDeterminant(A, progress); }

}  // namespace qmx
