// SPDX-License-Identifier: MIT
#pragma once

#include "derivation/derivation.h"
#include "derivation/scribe.h"

// One derivation each; the question fits its task.

namespace qmx {

void DeriveDeterminant(const DerivationQuestion& question, Scribe& scribe);

}  // namespace qmx
