// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "derivation/exact_matrix.h"

namespace qmx {

/// A polynomial with exact coefficients: element k is that of the k-th power.
using Polynomial = std::vector<Rational>;

struct PolynomialFactor {
  Polynomial polynomial;  ///< The highest coefficient is 1.
  int multiplicity = 1;
  int realRoots = 0;
};

/// det(λI - A).
Polynomial CharacteristicPolynomial(const ExactMatrix& A);

/// The irreducible factors over the rational numbers of a polynomial whose highest coefficient is
/// 1, by degree; those of the same degree by their coefficients from the lowest.
std::vector<PolynomialFactor> FactorsOf(const Polynomial& polynomial);

/// Vectors that are a basis of all x with A·x = 0: each has a 1 in one of the columns
/// without a pivot of the reduced row echelon form, which is left in A.
std::vector<std::vector<Rational>> NullSpaceOf(ExactMatrix& A);

}  // namespace qmx
