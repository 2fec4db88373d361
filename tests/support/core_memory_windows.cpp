// SPDX-License-Identifier: MIT
// The second needs the first.
// clang-format off
#include <windows.h>
#include <psapi.h>
// clang-format on

#include <algorithm>
#include <atomic>
#include <thread>

#include "support/core_memory.h"

namespace qmx::test {
namespace {

long Kilobytes() {
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return static_cast<long>(counters.WorkingSetSize / 1024);
}

}  // namespace

long MemoryOf(const std::function<bool()>& work) {
  const long before = Kilobytes();
  std::atomic<bool> done = false;
  long most = before;
  std::thread watch([&] {
    while (!done) most = std::max(most, Kilobytes());
  });
  const bool worked = work();
  done = true;
  watch.join();
  return worked ? most - before : -1;
}

}  // namespace qmx::test
