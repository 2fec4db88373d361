// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>

#include "base/matrix.h"

namespace qmx::test {

/// A matrix from its rows: Rows({{1, 2}, {3, 4}}).
Matrix Rows(std::initializer_list<std::initializer_list<double>> rows);

}  // namespace qmx::test
