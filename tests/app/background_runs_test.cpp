// SPDX-License-Identifier: MIT
// Work beside the windows, without a window.

#include "app/background_runs.h"

#include <gtest/gtest.h>

#include <QTest>
#include <QThread>
#include <atomic>
#include <new>
#include <vector>

namespace qmx::test {
namespace {

class BackgroundRunsTest : public ::testing::Test {
 protected:
  BackgroundRuns::Ticket Start(int number) {
    return runs.Start(
        [this, number]() -> BackgroundRuns::Work {
          return [this, number](const BackgroundRuns::Look&) { done.push_back(number); };
        },
        [this](BackgroundRuns::End end) { ends.push_back(end); });
  }
  void UntilIdle() {
    EXPECT_TRUE(QTest::qWaitFor([this] { return runs.IsIdle(); }));
  }

  std::vector<int> done;
  std::vector<BackgroundRuns::End> ends;
  BackgroundRuns runs;
};

TEST_F(BackgroundRunsTest, OneComesAfterTheOther) {
  const auto first = Start(1);
  const auto second = Start(2);
  UntilIdle();
  EXPECT_EQ(done, (std::vector{1, 2}));
  EXPECT_EQ(ends.size(), 2U);
}

TEST_F(BackgroundRunsTest, WhatNobodyWaitsForIsNotBegun) {
  const auto first = Start(1);
  Start(2);
  const auto third = Start(3);
  UntilIdle();
  EXPECT_EQ(done, (std::vector{1, 3}));
  EXPECT_EQ(ends.size(), 2U);
}

TEST_F(BackgroundRunsTest, OneThatIsDoneButNotFollowedYetIsNotDoneAgain) {
  std::atomic<int> times = 0;
  const auto first = runs.Start(
      [&times]() -> BackgroundRuns::Work {
        return [&times](const BackgroundRuns::Look&) { ++times; };
      },
      [this](BackgroundRuns::End end) { ends.push_back(end); });
  // Without events nothing can follow.
  while (times == 0) QThread::yieldCurrentThread();
  QThread::msleep(20);
  const auto second = Start(2);
  QThread::msleep(20);
  EXPECT_EQ(times, 1);
  UntilIdle();
  EXPECT_EQ(times, 1);
  EXPECT_EQ(done, std::vector{2});
  EXPECT_EQ(ends.size(), 2U);
}

TEST_F(BackgroundRunsTest, WithoutMemoryForWhatItReadsThatFollowsAtOnce) {
  const auto ticket = runs.Start([]() -> BackgroundRuns::Work { throw std::bad_alloc(); },
                                 [this](BackgroundRuns::End end) { ends.push_back(end); });
  EXPECT_EQ(ends, std::vector{BackgroundRuns::End::kNoMemory});
  EXPECT_TRUE(runs.IsIdle());
  const auto next = Start(1);
  UntilIdle();
  EXPECT_EQ(done, std::vector{1});
}

TEST_F(BackgroundRunsTest, WithoutMemoryToShowItThatFollowsToo) {
  const auto ticket =
      runs.Start([]() -> BackgroundRuns::Work { return [](const BackgroundRuns::Look&) {}; },
                 [this](BackgroundRuns::End end) {
                   ends.push_back(end);
                   if (end == BackgroundRuns::End::kDone) throw std::bad_alloc();
                 });
  UntilIdle();
  EXPECT_EQ(ends, (std::vector{BackgroundRuns::End::kDone, BackgroundRuns::End::kNoMemory}));
}

}  // namespace
}  // namespace qmx::test
