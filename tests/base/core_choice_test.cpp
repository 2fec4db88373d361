// SPDX-License-Identifier: MIT
#include "base/core_choice.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace qmx {
namespace {

#ifdef __linux__
TEST(CoreChoiceTest, AThreadThatIsKeptOffACoreTakesAnotherOne) {
  std::atomic<bool> isKeptOff = false;
  std::atomic<int> core = -1;
  std::thread other([&] {
    while (!isKeptOff) std::this_thread::yield();
    core = RunningCore();
  });
  const int avoided = RunningCore();
  KeepOff(avoided, other);
  isKeptOff = true;
  other.join();
  EXPECT_GE(avoided, 0);
  EXPECT_GE(core, 0);
  if (std::thread::hardware_concurrency() > 1) {
    EXPECT_NE(core, avoided);
  }
}

TEST(CoreChoiceTest, NoCoreIsAvoidedWhereNoneIsKnown) {
  std::thread other([] {});
  KeepOff(-1, other);
  KeepOff(1 << 20, other);
  other.join();
}
#endif

}  // namespace
}  // namespace qmx
