// SPDX-License-Identifier: MIT
// Derivations beside the windows, without a window.

#include "app/derivation_runs.h"

#include <gtest/gtest.h>

#include <QTest>
#include <new>
#include <vector>

namespace qmx::test {
namespace {

class DerivationRunsTest : public ::testing::Test {
 protected:
  DerivationRuns::Ticket Start(int number) {
    return runs.Start(
        [this, number]() -> DerivationRuns::Work {
          return [this, number](const DerivationLook&) { done.push_back(number); };
        },
        [this](DerivationRuns::End end) { ends.push_back(end); });
  }
  void UntilIdle() {
    EXPECT_TRUE(QTest::qWaitFor([this] { return runs.IsIdle(); }));
  }

  std::vector<int> done;
  std::vector<DerivationRuns::End> ends;
  DerivationRuns runs;
};

TEST_F(DerivationRunsTest, OneComesAfterTheOther) {
  const auto first = Start(1);
  const auto second = Start(2);
  UntilIdle();
  EXPECT_EQ(done, (std::vector{1, 2}));
  EXPECT_EQ(ends.size(), 2U);
}

TEST_F(DerivationRunsTest, WhatNobodyWaitsForIsNotBegun) {
  const auto first = Start(1);
  Start(2);
  const auto third = Start(3);
  UntilIdle();
  EXPECT_EQ(done, (std::vector{1, 3}));
  EXPECT_EQ(ends.size(), 2U);
}

TEST_F(DerivationRunsTest, WithoutMemoryForWhatItReadsThatFollowsAtOnce) {
  const auto ticket = runs.Start([]() -> DerivationRuns::Work { throw std::bad_alloc(); },
                                 [this](DerivationRuns::End end) { ends.push_back(end); });
  EXPECT_EQ(ends, std::vector{DerivationRuns::End::kNoMemory});
  EXPECT_TRUE(runs.IsIdle());
  const auto next = Start(1);
  UntilIdle();
  EXPECT_EQ(done, std::vector{1});
}

TEST_F(DerivationRunsTest, WithoutMemoryToShowItThatFollowsToo) {
  const auto ticket =
      runs.Start([]() -> DerivationRuns::Work { return [](const DerivationLook&) {}; },
                 [this](DerivationRuns::End end) {
                   ends.push_back(end);
                   if (end == DerivationRuns::End::kDone) throw std::bad_alloc();
                 });
  UntilIdle();
  EXPECT_EQ(ends, (std::vector{DerivationRuns::End::kDone, DerivationRuns::End::kNoMemory}));
}

}  // namespace
}  // namespace qmx::test
