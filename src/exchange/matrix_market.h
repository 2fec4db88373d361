// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "base/matrix.h"
#include "base/memory.h"
#include "exchange/foreign_outcome.h"

namespace qmx {

// The exchange format of the Matrix Market of NIST (Boisvert, Pozo, Remington, "The Matrix Market
// exchange formats: initial design", NISTIR 5935, 1996).

/// True for a text that begins as a Matrix Market file does.
bool IsMatrixMarket(std::string_view bytes);

/// Reads a matrix in array or coordinate form, of real, integer or pattern values, general,
/// symmetric or skew-symmetric. The other half of a symmetric matrix is filled in; entries above
/// the diagonal are refused in such a file, and a skew-symmetric one has none on the diagonal.
/// Elements that a coordinate file does not list are 0; one that it lists again is the sum, as the
/// usual readers have it; a pattern's are 1. Refused, with line and word: complex and Hermitian
/// matrices, values that are no finite number, integers that a double cannot hold exactly, counts
/// that the file does not fill, and whatever follows the last entry.
ForeignOutcome<Matrix> ReadMatrixMarket(std::string_view bytes,
                                        const Memory& memory = SystemMemory());

/// A matrix in array form, real and general, exactly. Refuses an element that is no finite number.
ForeignOutcome<std::string> WriteMatrixMarket(const Matrix& values);

}  // namespace qmx
