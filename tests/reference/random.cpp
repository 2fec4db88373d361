// SPDX-License-Identifier: MIT
#include <cmath>

#include "reference/reference.h"

namespace qmx::reference {

Created Random(int rows, int cols, double low, double high, bool symmetric, bool integers,
               const std::function<float()>& draw) {
  Created created{false, Table(rows, cols)};
  Table& C = created.table;
  const double range = high - low;
  const auto entry = [&] {
    const double u = draw();
    const double x = u * range + low;
    return integers ? std::rint(x) : x;
  };
  try {
    if (symmetric) {
      for (int i = 1; i <= rows; ++i) {
        for (int j = i; j <= cols; ++j) {
          C(i, j) = entry();
          C(j, i) = C(i, j);
        }
      }
    } else {
      for (int i = 1; i <= rows; ++i) {
        for (int j = 1; j <= cols; ++j) C(i, j) = entry();
      }
    }
    created.complete = true;
  } catch (const SubscriptFault&) {
    created.complete = false;
  }
  return created;
}

}  // namespace qmx::reference
