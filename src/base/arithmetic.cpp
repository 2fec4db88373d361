// SPDX-License-Identifier: MIT
#include "base/arithmetic.h"

#include <cfenv>

#include "base/fault.h"

namespace qmx {

void ClearArithmeticFaults() { std::feclearexcept(FE_ALL_EXCEPT); }

KeepArithmeticFaults::KeepArithmeticFaults() { std::fegetexceptflag(&kept_, FE_ALL_EXCEPT); }

KeepArithmeticFaults::~KeepArithmeticFaults() { std::fesetexceptflag(&kept_, FE_ALL_EXCEPT); }

void CheckArithmetic() {
  const int raised = std::fetestexcept(FE_OVERFLOW | FE_DIVBYZERO | FE_INVALID);
  if (raised == 0) return;
  if ((raised & FE_OVERFLOW) != 0) throw RuntimeFault(Fault::kOverflow);
  if ((raised & FE_DIVBYZERO) != 0) throw RuntimeFault(Fault::kDivisionByZero);
  throw RuntimeFault(Fault::kInvalidProcedureCall);
}

}  // namespace qmx
