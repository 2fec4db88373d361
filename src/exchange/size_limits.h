// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "base/matrix.h"
#include "base/memory.h"

namespace qmx {

/// So many elements a file may stand for beyond those that its own bytes could hold, by leaving out
/// zeros, by a formula or by compression: 5000 x 5000. A few bytes shall not ask for all memory.
inline constexpr std::uint64_t kMostUnfolded = 25'000'000;

/// Refuses a shape that cannot become a matrix: without elements, with more rows or columns than
/// can be counted, with more elements than `held`, the number that the bytes at hand could possibly
/// hold, and kMostUnfolded where the format unfolds, or beyond the memory that there is to spare.
enum class Storage { kFull, kUnfolds };
void CheckShape(std::uint64_t rows, std::uint64_t cols, std::uint64_t held, Storage storage,
                const Memory& memory);

/// A matrix of unset elements after CheckShape.
Matrix NewMatrix(std::uint64_t rows, std::uint64_t cols, std::uint64_t held, Storage storage,
                 const Memory& memory);

}  // namespace qmx
