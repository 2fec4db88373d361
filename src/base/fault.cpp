// SPDX-License-Identifier: MIT
#include "base/fault.h"

#include <array>

namespace qmx {
namespace {

struct FaultEntry {
  Fault fault;
  const char* text;
};

constexpr std::array<FaultEntry, 11> kFaults{{
    {Fault::kInvalidProcedureCall, "Invalid procedure call or argument"},
    {Fault::kOverflow, "Overflow"},
    {Fault::kOutOfMemory, "Out of memory"},
    {Fault::kSubscriptOutOfRange, "Subscript out of range"},
    {Fault::kDivisionByZero, "Division by zero"},
    {Fault::kFileNotFound, "File not found"},
    {Fault::kDiskFull, "Disk full"},
    {Fault::kInputPastEndOfFile, "Input past end of file"},
    {Fault::kPermissionDenied, "Permission denied"},
    {Fault::kPathNotFound, "Path not found"},
    {Fault::kPrinterError, "Printer error"},
}};

}  // namespace

const char* FaultText(Fault fault) {
  for (const FaultEntry& entry : kFaults) {
    if (entry.fault == fault) return entry.text;
  }
  return "Unknown fault";
}

std::string FaultMessage(Fault fault) {
  return "Run-time error '" + std::to_string(static_cast<int>(fault)) + "': " + FaultText(fault);
}

}  // namespace qmx
