#pragma once

namespace qmx {

/// Forgets the arithmetic faults met so far. To be called before a computation whose faults matter.
void ClearArithmeticFaults();

/// Raises the fault of a computation since the last clearing whose result was not a finite number,
/// even where the infinity vanished again: 6 (overflow), 11 (division of a non-zero number by zero)
/// or 5 (invalid operation, such as 0/0 or the root of a negative number). Where several were met,
/// overflow goes before division and both before an invalid operation, which mostly follows from
/// one of them. Underflow is no fault.
void CheckArithmetic();

}  // namespace qmx
