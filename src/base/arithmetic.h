// SPDX-License-Identifier: MIT
#pragma once

namespace qmx {

/// Forgets the arithmetic faults met so far. To be called before a computation whose faults matter.
void ClearArithmeticFaults();

/// The faults met so far, to be brought back after something else has computed.
class ArithmeticFaults {
 public:
  ArithmeticFaults();
  /// Makes these the faults met so far, and forgets all others.
  void BringBack() const;

 private:
  int raised_;
};

/// Keeps the faults met so far as they are while something else computes, such as a window that
/// paints itself in the middle of a long computation.
class KeepArithmeticFaults {
 public:
  KeepArithmeticFaults() = default;
  ~KeepArithmeticFaults() { kept_.BringBack(); }
  KeepArithmeticFaults(const KeepArithmeticFaults&) = delete;
  KeepArithmeticFaults& operator=(const KeepArithmeticFaults&) = delete;

 private:
  ArithmeticFaults kept_;
};

/// Raises the fault of a computation since the last clearing whose result was not a finite number,
/// even where the infinity vanished again: 6 (overflow), 11 (division of a non-zero number by zero)
/// or 5 (invalid operation, such as 0/0 or the root of a negative number). Where several were met,
/// overflow goes before division and both before an invalid operation, which mostly follows from
/// one of them. Underflow is no fault.
void CheckArithmetic();

}  // namespace qmx
