// SPDX-License-Identifier: MIT
#pragma once

#include <ctime>

namespace qmx::test {

/// Milliseconds of processor time that this process has had so far. What else runs on the machine
/// does not count. The clock of the C library tells the time of day on Windows.
inline double ProcessorTime() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

/// Milliseconds of processor time that something takes.
template <typename Work>
double CpuTime(Work work) {
  const double start = ProcessorTime();
  work();
  return ProcessorTime() - start;
}

/// How many times longer work may take in a build that checks every access to memory.
#ifdef QMX_SANITIZED
inline constexpr double kSlowdown = 8;
#else
inline constexpr double kSlowdown = 1;
#endif

}  // namespace qmx::test
