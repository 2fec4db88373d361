// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <string>

#include "base/matrix.h"
#include "support/core_rows.h"

namespace qmx::test {

/// Succeeds if both have the same shape and the same bits, the sign of a zero included.
inline ::testing::AssertionResult SameBits(const Matrix& one, const Matrix& two) {
  if (one.Rows() != two.Rows() || one.Cols() != two.Cols()) {
    return ::testing::AssertionFailure()
           << one.Rows() << " x " << one.Cols() << " and " << two.Rows() << " x " << two.Cols();
  }
  for (int i = 1; i <= one.Rows(); ++i) {
    for (int j = 1; j <= one.Cols(); ++j) {
      if (std::bit_cast<std::uint64_t>(one(i, j)) == std::bit_cast<std::uint64_t>(two(i, j)))
        continue;
      return ::testing::AssertionFailure()
             << one(i, j) << " and " << two(i, j) << " at (" << i << "," << j << ")";
    }
  }
  return ::testing::AssertionSuccess();
}

/// The matrix of the files in tests/data/exchange: numbers of every size and both zeros.
inline Matrix TellingMatrix() {
  return Rows({{1, -0.5, 1.0 / 3, 1e20},
               {0.1 + 0.2, -0.0, 5e-324, 123456789},
               {1.7976931348623157e308, 2.2250738585072014e-308, -1e-20, 3}});
}

/// The sparse matrix of these files.
inline Matrix SparseMatrix() { return Rows({{0, 2.5, 0, 0}, {0, 0, 0, 0}, {-1, 0, 0, 7}}); }

}  // namespace qmx::test
