// SPDX-License-Identifier: MIT
#include "algorithms/projection.h"

#include <gtest/gtest.h>

namespace qmx {
namespace {

TEST(Projection, NoHalfIsLargerThanTheLargest) {
  for (const int tile : {2, 3, 4, 8, 14, 16, 64}) {
    const int most = 400;
    for (int columns = kColumnsAtOnce + 1; columns <= most; ++columns) {
      const int left = LeftHalf(columns, tile);
      ASSERT_GE(left, 1) << columns << " in tiles of " << tile;
      ASSERT_LT(left, columns) << columns << " in tiles of " << tile;
      ASSERT_LE(std::max(left, columns - left), LargestHalf(columns, tile))
          << columns << " in tiles of " << tile;
    }
  }
}

}  // namespace
}  // namespace qmx
