// SPDX-License-Identifier: MIT
#include "support/core_rows.h"

namespace qmx::test {

Matrix Rows(std::initializer_list<std::initializer_list<double>> rows) {
  Matrix matrix(static_cast<int>(rows.size()),
                rows.size() == 0 ? 0 : static_cast<int>(rows.begin()->size()));
  int i = 0;
  for (const auto& row : rows) {
    ++i;
    int j = 0;
    for (const double value : row) matrix(i, ++j) = value;
  }
  return matrix;
}

}  // namespace qmx::test
