// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/matrix.h"

namespace qmx::bench {

/// Entries in [-1, 1), the same in every run.
inline Matrix RandomMatrix(int rows, int cols, int seed = 1) {
  Matrix A(rows, cols);
  std::uint64_t state = seed;
  for (std::size_t k = 0; k < A.Size(); ++k) {
    state = state * 6364136223846793005u + 1442695040888963407u;
    A.Data()[k] = static_cast<double>(state >> 11) * 0x1p-52 - 1;
  }
  return A;
}

}  // namespace qmx::bench
