// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "derivation/exact_polynomial.h"
#include "derivation/scribe.h"

namespace qmx {

/// λ^n + c · λ^(n-1) ... with the coefficients exact alone. False where one of them has too many
/// digits and is rounded.
bool AppendPolynomial(Line& line, const Polynomial& polynomial);

/// The characteristic polynomial of A, its factors over the rational numbers and their roots as far
/// as these can be written. Returns the factors: nothing where A is too large for that, which is
/// said.
std::vector<PolynomialFactor> TellCharacteristicPolynomial(Scribe& scribe, const Matrix& A);

}  // namespace qmx
