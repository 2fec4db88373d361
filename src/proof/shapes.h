// SPDX-License-Identifier: MIT
#pragma once

#include "proof/proof.h"

namespace qmx {

/// True if the operands and what was computed have shapes that belong together, and every row that
/// an exchange names exists.
bool Fits(const ProofQuestion& question);

}  // namespace qmx
