// SPDX-License-Identifier: MIT
#include "base/experience.h"

#include <gtest/gtest.h>

#include <chrono>

namespace qmx {
namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr Experience::Clock::time_point kStart{seconds(1000)};

TEST(ExperienceTest, TheFirstOfAKindIsDoneAlone) {
  Experience experience;
  EXPECT_FALSE(experience.ShouldShare("sum", 1, kStart));
  experience.NoteAlone("sum", 1, microseconds(300));
  EXPECT_TRUE(experience.ShouldShare("sum", 1, kStart));
  EXPECT_FALSE(experience.ShouldShare("sum", 2, kStart));
  EXPECT_FALSE(experience.ShouldShare("product", 1, kStart));
}

TEST(ExperienceTest, WhatGainsIsSharedAgain) {
  Experience experience;
  experience.NoteAlone("sum", 1, microseconds(300));
  experience.NoteShared("sum", 1, microseconds(200), kStart);
  EXPECT_TRUE(experience.ShouldShare("sum", 1, kStart));
}

TEST(ExperienceTest, WhatHardlyGainsIsDoneAlone) {
  Experience experience;
  experience.NoteAlone("sum", 1, microseconds(300));
  experience.NoteShared("sum", 1, microseconds(299), kStart);
  EXPECT_FALSE(experience.ShouldShare("sum", 1, kStart));
}

TEST(ExperienceTest, ALossIsASmallPartOfTheTimeAlone) {
  Experience experience;
  experience.NoteAlone("sum", 1, microseconds(300));
  experience.NoteShared("sum", 1, microseconds(1300), kStart);
  EXPECT_FALSE(experience.ShouldShare("sum", 1, kStart + milliseconds(20)));
  EXPECT_TRUE(experience.ShouldShare("sum", 1, kStart + milliseconds(21)));
}

TEST(ExperienceTest, LossesInARowAreTriedEverMoreSeldom) {
  Experience experience;
  experience.NoteAlone("sum", 1, microseconds(300));
  experience.NoteShared("sum", 1, microseconds(400), kStart);
  EXPECT_TRUE(experience.ShouldShare("sum", 1, kStart + milliseconds(5)));
  experience.NoteShared("sum", 1, microseconds(400), kStart);
  EXPECT_FALSE(experience.ShouldShare("sum", 1, kStart + milliseconds(9)));
  EXPECT_TRUE(experience.ShouldShare("sum", 1, kStart + milliseconds(10)));
  for (int k = 0; k < 10; ++k) experience.NoteShared("sum", 1, microseconds(400), kStart);
  EXPECT_FALSE(experience.ShouldShare("sum", 1, kStart + milliseconds(199)));
  EXPECT_TRUE(experience.ShouldShare("sum", 1, kStart + milliseconds(200)));
}

TEST(ExperienceTest, OneOfManyIsDoneAloneToCompareWith) {
  Experience experience;
  experience.NoteAlone("sum", 1, microseconds(300));
  for (int k = 0; k < 16; ++k) {
    EXPECT_TRUE(experience.ShouldShare("sum", 1, kStart));
    experience.NoteShared("sum", 1, microseconds(200), kStart);
  }
  EXPECT_FALSE(experience.ShouldShare("sum", 1, kStart));
  experience.NoteAlone("sum", 1, microseconds(300));
  EXPECT_TRUE(experience.ShouldShare("sum", 1, kStart));
}

TEST(ExperienceTest, OneInterruptedRunDoesNotMakeSharingPay) {
  Experience experience;
  experience.NoteAlone("sum", 1, microseconds(300));
  experience.NoteAlone("sum", 1, milliseconds(4));
  experience.NoteShared("sum", 1, microseconds(400), kStart);
  EXPECT_FALSE(experience.ShouldShare("sum", 1, kStart));
}

TEST(ExperienceTest, ForgetsTheOldestOfMany) {
  Experience experience;
  for (int work = 1; work <= 17; ++work) experience.NoteAlone("sum", work, microseconds(300));
  EXPECT_TRUE(experience.ShouldShare("sum", 17, kStart));
  EXPECT_TRUE(experience.ShouldShare("sum", 2, kStart));
  EXPECT_FALSE(experience.ShouldShare("sum", 1, kStart));
}

}  // namespace
}  // namespace qmx
