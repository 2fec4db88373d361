// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <string>

namespace qmx {

/// Run-time faults by their classic numbers. A fault ends the program, after an offer to save the
/// project.
enum class Fault {
  kInvalidProcedureCall = 5,
  kOverflow = 6,
  kOutOfMemory = 7,
  kSubscriptOutOfRange = 9,
  kDivisionByZero = 11,
  kFileNotFound = 53,
  kDiskFull = 61,
  kInputPastEndOfFile = 62,
  kPermissionDenied = 70,
  kPathNotFound = 76,
  kPrinterError = 482,
};

/// The text that belongs to a fault: "Subscript out of range" for 9.
const char* FaultText(Fault fault);

/// The one line that the error box shows: "Run-time error '9': Subscript out of range".
std::string FaultMessage(Fault fault);

/// Thrown where a fault occurs; caught by the one handler at the top of the program and nowhere
/// between.
class RuntimeFault : public std::exception {
 public:
  explicit RuntimeFault(Fault fault) : fault_(fault) {}
  Fault Number() const { return fault_; }
  const char* what() const noexcept override { return FaultText(fault_); }

 private:
  Fault fault_;
};

}  // namespace qmx
