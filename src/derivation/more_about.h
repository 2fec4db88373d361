// SPDX-License-Identifier: MIT
#pragma once

#include "derivation/derivation.h"

namespace qmx {

/// Rank, reduced row echelon form, null space, condition number and all eigenvalues of A, each with
/// its steps.
Document MoreAboutMatrix(const Matrix& A, const DerivationLook& look);

}  // namespace qmx
