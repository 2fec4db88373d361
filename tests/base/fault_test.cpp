// SPDX-License-Identifier: MIT
#include "base/fault.h"

#include <gtest/gtest.h>

#include <string>

namespace qmx {
namespace {

TEST(FaultTest, EveryFaultHasItsText) {
  const std::pair<Fault, const char*> known[] = {
      {Fault::kInvalidProcedureCall, "Run-time error '5': Invalid procedure call or argument"},
      {Fault::kOverflow, "Run-time error '6': Overflow"},
      {Fault::kOutOfMemory, "Run-time error '7': Out of memory"},
      {Fault::kSubscriptOutOfRange, "Run-time error '9': Subscript out of range"},
      {Fault::kDivisionByZero, "Run-time error '11': Division by zero"},
      {Fault::kFileNotFound, "Run-time error '53': File not found"},
      {Fault::kDiskFull, "Run-time error '61': Disk full"},
      {Fault::kInputPastEndOfFile, "Run-time error '62': Input past end of file"},
      {Fault::kPermissionDenied, "Run-time error '70': Permission denied"},
      {Fault::kPathNotFound, "Run-time error '76': Path not found"},
      {Fault::kPrinterError, "Run-time error '482': Printer error"},
  };
  for (const auto& [fault, message] : known) EXPECT_EQ(FaultMessage(fault), message);
}

TEST(FaultTest, TheExceptionCarriesNumberAndText) {
  const RuntimeFault fault(Fault::kOverflow);
  EXPECT_EQ(fault.Number(), Fault::kOverflow);
  EXPECT_STREQ(fault.what(), "Overflow");
}

}  // namespace
}  // namespace qmx
