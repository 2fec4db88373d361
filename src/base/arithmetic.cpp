// SPDX-License-Identifier: MIT
#include "base/arithmetic.h"

#include <cfenv>

#include "base/fault.h"

namespace qmx {

void ClearArithmeticFaults() { std::feclearexcept(FE_ALL_EXCEPT); }

ArithmeticFaults::ArithmeticFaults() : raised_(std::fetestexcept(FE_ALL_EXCEPT)) {}

// Not by fesetexceptflag: that of mingw's C library lets every fault end the program from then on.
void ArithmeticFaults::BringBack() const {
  std::feclearexcept(FE_ALL_EXCEPT);
  if (raised_ != 0) std::feraiseexcept(raised_);
}

void CheckArithmetic() {
  const int raised = std::fetestexcept(FE_OVERFLOW | FE_DIVBYZERO | FE_INVALID);
  if (raised == 0) return;
  if ((raised & FE_OVERFLOW) != 0) throw RuntimeFault(Fault::kOverflow);
  if ((raised & FE_DIVBYZERO) != 0) throw RuntimeFault(Fault::kDivisionByZero);
  throw RuntimeFault(Fault::kInvalidProcedureCall);
}

}  // namespace qmx
