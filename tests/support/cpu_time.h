// SPDX-License-Identifier: MIT
#pragma once

#include <ctime>

namespace qmx::test {

/// Milliseconds of processor time that something takes. What else runs on the machine does not
/// count.
template <typename Work>
double CpuTime(Work work) {
  const std::clock_t start = std::clock();
  work();
  return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

/// How many times longer work may take in a build that checks every access to memory.
#ifdef QMX_SANITIZED
inline constexpr double kSlowdown = 8;
#else
inline constexpr double kSlowdown = 1;
#endif

}  // namespace qmx::test
