// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "derivation/characteristic.h"
#include "derivation/polynomial_roots.h"
#include "derivation/scribe.h"

namespace qmx {

/// What is known of a matrix at a glance: what it is, and its value.
using Glance = std::vector<std::pair<std::string, Line>>;

/// Tells all eigenvalues of a square matrix and how often each is one.
void TellEigenvalues(const ExactMatrix& A, const CharacteristicPolynomial& characteristic,
                     Scribe& scribe, Glance& glance);

/// Tells the condition numbers of a square matrix in the 1-norm, exactly, and in the 2-norm, with
/// digits that hold (Golub & Van Loan, Matrix Computations, 2.6.2).
void TellConditionNumbers(const ExactMatrix& A, bool isSingular, Scribe& scribe, Glance& glance);

}  // namespace qmx
