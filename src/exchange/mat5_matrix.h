// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

#include "base/matrix.h"
#include "base/memory.h"
#include "exchange/mat5_variables.h"

namespace qmx {

/// The matrix of the present variable of a file of form 5, of which ProblemOf says nothing; full or
/// sparse. `held` is the size of the file. Refuses shapes as CheckShape does, what ProblemOfWhole
/// says, elements as ConvertElements does, numbers that are none of the variable's class, and
/// entries of a sparse matrix that have no place in it.
Matrix ReadMat5Matrix(const Mat5Variables& variables, std::size_t held, const Memory& memory);

}  // namespace qmx
