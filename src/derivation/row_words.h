// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "derivation/document.h"
#include "derivation/traced.h"

// The steps of all derivations in words, each with the operation that it names.

namespace qmx {

/// "Rows 1 and 3 change places."
Line SayExchange(int one, int two);

/// "Row 3 minus 2/5 of row 1.", "Row 3 plus row 1.", "Row 3 stays as it is."; of columns the same.
Line SaySubtract(int target, const Traced& factor, int source, bool isOfColumns = false);

/// "Row 2 divided by 5/3."
Line SayDivide(int target, const Traced& factor);
/// "Column 2 divided by √5."
Line SayDivideColumn(int target, const TracedRoot& factor);

/// "Row 2 becomes row 1, row 3 row 2, row 1 row 3."; of many rows the first and the last ones.
Line SayReorder(const std::vector<int>& order);

}  // namespace qmx
