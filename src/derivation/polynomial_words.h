// SPDX-License-Identifier: MIT
#pragma once

#include "derivation/characteristic.h"
#include "derivation/document.h"
#include "derivation/polynomial_roots.h"
#include "derivation/scribe.h"

namespace qmx {

/// Adds λ² - 5·λ + 6 to a line, powers falling.
void AppendPolynomial(Line& line, const RationalPolynomial& polynomial);

/// Adds a root or a pair of them: 2, 3/2 - √5/2 ≈ 0.381966011250105, 1 ± 2·i.
void AppendRoot(Line& line, const FoundRoot& root);

/// Tells det(λ·I - A) with its steps, and its factors over the rational numbers.
void TellCharacteristic(const ExactMatrix& A, const CharacteristicPolynomial& characteristic,
                        Scribe& scribe);

/// Polynomials of higher degree are not written out.
inline constexpr int kMostShownDegree = 12;

}  // namespace qmx
