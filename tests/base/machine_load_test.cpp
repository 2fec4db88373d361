// SPDX-License-Identifier: MIT
#include "base/machine_load.h"

#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <thread>
#include <vector>

namespace qmx {
namespace {

TEST(MachineLoadTest, TheMachineHasACore) { EXPECT_GE(SystemLoad().Cores(), 1); }

#ifdef __linux__
TEST(MachineLoadTest, CountsEveryThreadThatWantsACore) {
  constexpr int kThreads = 8;
  std::atomic<int> begun = 0;
  std::atomic<bool> over = false;
  std::vector<std::thread> threads;
  for (int k = 0; k < kThreads; ++k) {
    threads.emplace_back([&] {
      ++begun;
      while (!over) {
      }
    });
  }
  while (begun < kThreads) std::this_thread::yield();
  const std::optional<int> running = SystemLoad().Running();
  over = true;
  for (std::thread& thread : threads) thread.join();
  ASSERT_TRUE(running.has_value());
  EXPECT_GE(*running, kThreads + 1);
}
#endif

}  // namespace
}  // namespace qmx
