#pragma once

#include <vector>

#include "algorithms/ordered_product.h"

namespace qmx {

/// The coefficients of projections on columns v(1), v(2), ... that are no unit vectors: C(k, j) =
/// D(k, j) / squaredNorms[k], where row k of D holds the dot products with v(k). hasZero[j] tells
/// whether a dot product of column j is exactly zero; it holds a place for each column at least.
void ProjectionCoefficients(const View& D, const double* squaredNorms, const View& C,
                            std::vector<char>& hasZero);

}  // namespace qmx
