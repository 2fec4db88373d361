// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <chrono>
#include <mutex>
#include <optional>
#include <set>
#include <thread>

#include "base/machine_load.h"
#include "base/progress.h"
#include "base/team.h"
#include "support/core_meeting.h"

namespace qmx {
namespace {

using testing::Meeting;

void Nothing() {}

/// What a test says of the machine.
class SomeLoad : public MachineLoad {
 public:
  SomeLoad(std::optional<int> running, int cores) : running_(running), cores_(cores) {}
  std::optional<int> Running() const override { return running_; }
  int Cores() const override { return cores_; }
  void Become(int running) { running_ = running; }

 private:
  std::optional<int> running_;
  int cores_;
};

/// The members that took part in a job of many pieces.
std::set<int> MembersOfAJob(Team& team) {
  std::set<int> members;
  std::mutex mutex;
  team.Share(
      64,
      [&](int) {
        std::this_thread::sleep_for(std::chrono::microseconds(200));
        const std::lock_guard lock(mutex);
        members.insert(Team::Member());
      },
      Nothing);
  return members;
}

/// A job of a team of two whose caller waits for the other member, longer than that took to come.
void KeepWaiting(Team& team) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point start = Clock::now();
  Meeting begun(2);
  team.Share(
      2,
      [&](int) {
        begun.Come();
        if (Team::Member() == 0) return;
        std::this_thread::sleep_for(4 * (Clock::now() - start) + std::chrono::milliseconds(20));
      },
      Nothing);
}

TEST(TeamUnderLoadTest, WorksAloneForAWhileWhereTheOthersKeepItWaiting) {
  const SomeLoad idle(1, 2);
  Team team(2, &idle);
  KeepWaiting(team);
  EXPECT_FALSE(team.WouldShare());
  EXPECT_TRUE(team.CanShare());
  EXPECT_EQ(MembersOfAJob(team), std::set<int>{0});
}

TEST(TeamUnderLoadTest, SharesAllTheSameWhereNobodyTellsItOfALoad) {
  Team team(2);
  for (int job = 0; job < 2; ++job) KeepWaiting(team);
  EXPECT_TRUE(team.WouldShare());
}

TEST(TeamUnderLoadTest, WorksAloneWhereEveryOtherCoreIsWanted) {
  for (const int others : {2, 3, 50}) {
    const SomeLoad busy(1 + others, 3);
    Team team(4, &busy);
    EXPECT_FALSE(team.WouldShare());
    EXPECT_TRUE(team.CanShare());
    EXPECT_EQ(MembersOfAJob(team), std::set<int>{0});
  }
}

TEST(TeamUnderLoadTest, TakesAsManyMembersAsThereAreCoresThatNobodyWants) {
  const SomeLoad half(3, 4);
  Team most(6, &half);
  EXPECT_LE(*MembersOfAJob(most).rbegin(), 1);
  Team least(6, &half);
  Meeting both(2);
  least.Share(
      2, [&](int) { both.Come(); }, Nothing);
}

TEST(TeamUnderLoadTest, SharesWhereTheSystemSaysNothing) {
  const SomeLoad unknown(std::nullopt, 1);
  Team team(3, &unknown);
  EXPECT_TRUE(team.WouldShare());
  Meeting all(3);
  team.Share(
      3, [&](int) { all.Come(); }, Nothing);
}

TEST(TeamUnderLoadTest, ItsOwnMembersAreNoLoad) {
  SomeLoad load(1, 3);
  Team team(3, &load);
  Meeting begun(3);
  Meeting over(3);
  team.Share(
      3,
      [&](int) {
        begun.Come();
        if (Team::Member() == 0) {
          // What it knew is too old by then.
          std::this_thread::sleep_for(std::chrono::milliseconds(5));
          load.Become(3);
          EXPECT_TRUE(team.WouldShare());
          std::this_thread::sleep_for(std::chrono::milliseconds(5));
          load.Become(5);
          EXPECT_FALSE(team.WouldShare());
        }
        over.Come();
      },
      Nothing);
}

TEST(AttemptTest, ShortComputationsAreSharedByExperience) {
  const SomeLoad idle(1, 2);
  Team team(2, &idle);
  const auto run = [&team](std::chrono::milliseconds time) {
    const Attempt attempt(team, "test", 1000);
    std::this_thread::sleep_for(time);
    return attempt.IsShared();
  };
  EXPECT_FALSE(run(std::chrono::milliseconds(2))) << "the first";
  EXPECT_TRUE(run(std::chrono::milliseconds(40))) << "the second";
  // A loss is forgotten in time, and a busy machine may take that long; but not again and again.
  bool isShared = true;
  for (int trial = 0; trial < 5 && isShared; ++trial) isShared = run(std::chrono::milliseconds(40));
  EXPECT_FALSE(isShared) << "after a loss";
}

TEST(AttemptTest, AnExceptionTeachesNothing) {
  const SomeLoad idle(1, 2);
  Team team(2, &idle);
  EXPECT_THROW(
      {
        const Attempt attempt(team, "test", 1000);
        throw Stopped();
      },
      Stopped);
  EXPECT_FALSE(Attempt(team, "test", 1000).IsShared()) << "still the first";
}

TEST(AttemptTest, LongComputationsAndThoseWithoutALoadAreAlwaysShared) {
  const SomeLoad idle(1, 2);
  Team team(2, &idle);
  EXPECT_TRUE(Attempt(team, "test", 1e10).IsShared());
  Team fearless(2);
  EXPECT_TRUE(Attempt(fearless, "test", 1000).IsShared());
}

TEST(AttemptTest, NothingIsSharedThatATeamWouldNotShare) {
  const SomeLoad busy(5, 2);
  Team team(2, &busy);
  EXPECT_FALSE(Attempt(team, "test", 1e10).IsShared());
  Team one(1);
  EXPECT_FALSE(Attempt(one, "test", 1e10).IsShared());
}

}  // namespace
}  // namespace qmx
