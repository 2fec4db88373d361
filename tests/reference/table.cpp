// SPDX-License-Identifier: MIT
#include "reference/table.h"

#include <cfenv>

namespace qmx::reference {

void CheckFlags() {
  if (std::fetestexcept(FE_OVERFLOW) != 0) throw ArithmeticFault{6};
  if (std::fetestexcept(FE_DIVBYZERO) != 0) throw ArithmeticFault{11};
  if (std::fetestexcept(FE_INVALID) != 0) throw ArithmeticFault{5};
}

}  // namespace qmx::reference
