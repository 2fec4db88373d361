// SPDX-License-Identifier: MIT
#include "base/memory.h"

#include <gtest/gtest.h>

#ifdef __linux__
#include <sys/resource.h>
#endif

#include <array>
#include <vector>

namespace qmx {
namespace {

TEST(MemoryTest, KnowsThatSomeMemoryIsAvailable) {
  EXPECT_GT(SystemMemory().Available(), std::size_t{1} << 20);
}

#if defined(__GLIBC__) && !defined(QMX_SANITIZED)
/// Pages that the system had to hand out so far.
long PageFaults() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_minflt;
}

/// What the matrices of a task with some hundred rows take.
void TakeAndGiveBack() {
  std::array<std::vector<char>, 20> blocks;
  for (auto& block : blocks) block.assign(100'000, 'x');
}

TEST(MemoryTest, KeepsFreedMemoryForTheNextTask) {
  KeepFreedMemory();
  TakeAndGiveBack();
  const long before = PageFaults();
  for (int k = 0; k < 10; ++k) TakeAndGiveBack();
  EXPECT_LT(PageFaults() - before, 200);  // All pages anew would be nearly 5000.
}
#endif

}  // namespace
}  // namespace qmx
