// SPDX-License-Identifier: MIT
// The entry of a coverage-guided fuzzer for one reader: QMX_FUZZ_READER is the routine it tries.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "foreign_reading.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string wrong = qmx::fuzz::QMX_FUZZ_READER({reinterpret_cast<const char*>(data), size});
  if (!wrong.empty()) {
    std::fprintf(stderr, "%s\n", wrong.c_str());
    std::abort();
  }
  return 0;
}
