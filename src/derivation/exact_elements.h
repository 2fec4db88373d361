// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "derivation/derivation.h"

namespace qmx {

/// Numerators and denominators of elements that grids show as fractions have no more digits.
inline constexpr int kMostElementDigits = 9;

/// See Deriver::ExactElements. The question fits its task.
std::vector<std::vector<ExactNumber>> ExactElementsOf(const DerivationQuestion& question,
                                                      const DerivationLook& look);

}  // namespace qmx
