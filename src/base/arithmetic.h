// SPDX-License-Identifier: MIT
#pragma once

#include <cfenv>

namespace qmx {

/// Forgets the arithmetic faults met so far. To be called before a computation whose faults matter.
void ClearArithmeticFaults();

/// Keeps the faults met so far as they are while something else computes, such as a window that
/// paints itself in the middle of a long computation.
class KeepArithmeticFaults {
 public:
  KeepArithmeticFaults();
  ~KeepArithmeticFaults();
  KeepArithmeticFaults(const KeepArithmeticFaults&) = delete;
  KeepArithmeticFaults& operator=(const KeepArithmeticFaults&) = delete;

 private:
  std::fexcept_t kept_;
};

/// Raises the fault of a computation since the last clearing whose result was not a finite number,
/// even where the infinity vanished again: 6 (overflow), 11 (division of a non-zero number by zero)
/// or 5 (invalid operation, such as 0/0 or the root of a negative number). Where several were met,
/// overflow goes before division and both before an invalid operation, which mostly follows from
/// one of them. Underflow is no fault.
void CheckArithmetic();

}  // namespace qmx
