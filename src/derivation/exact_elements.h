// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "derivation/derivation.h"

namespace qmx {

/// See Deriver::ExactElements. The question fits its task.
std::vector<std::vector<ExactNumber>> ExactElementsOf(const DerivationQuestion& question,
                                                      const DerivationLook& look);

}  // namespace qmx
