// SPDX-License-Identifier: MIT
#include "base/team.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cfenv>
#include <cmath>
#include <mutex>
#include <numeric>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

#include "base/progress.h"
#include "support/core_meeting.h"

namespace qmx {
namespace {

using testing::Meeting;

void Nothing() {}

class TeamTest : public ::testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(OfSizes, TeamTest, ::testing::Values(1, 2, 3, 7, 64));

TEST_P(TeamTest, RunsEveryPieceOnce) {
  Team team(GetParam());
  for (int pieces = 0; pieces < 40; ++pieces) {
    std::vector<std::atomic<int>> runs(pieces);
    team.Share(
        pieces, [&](int piece) { ++runs[piece]; }, Nothing);
    for (const std::atomic<int>& count : runs) EXPECT_EQ(count, 1);
  }
}

TEST_P(TeamTest, StandsThousandsOfShortJobsInARow) {
  Team team(GetParam());
  std::int64_t sum = 0;
  for (int job = 0; job < 5000; ++job) {
    int numbers[5] = {};
    team.Share(
        5, [&](int piece) { numbers[piece] = job + piece; }, Nothing);
    sum += std::accumulate(numbers, numbers + 5, std::int64_t{0});
  }
  EXPECT_EQ(sum, 5LL * 4999 * 5000 / 2 + 10 * 5000);
}

TEST_P(TeamTest, ThrowsWhatTheFirstFailingPieceOfALoopWouldThrow) {
  Team team(GetParam());
  for (int first = 0; first < 20; ++first) {
    try {
      team.Share(
          20,
          [&](int piece) {
            if (piece >= first) throw std::runtime_error(std::to_string(piece));
          },
          Nothing);
      ADD_FAILURE() << "nothing thrown";
    } catch (const std::runtime_error& thrown) {
      EXPECT_EQ(thrown.what(), std::to_string(first));
    }
  }
}

TEST_P(TeamTest, WorksOnAfterAFailure) {
  Team team(GetParam());
  EXPECT_THROW(team.Share(
                   8, [](int) { throw std::bad_alloc(); }, Nothing),
               std::bad_alloc);
  std::atomic<int> runs = 0;
  team.Share(
      8, [&](int) { ++runs; }, Nothing);
  EXPECT_EQ(runs, 8);
}

TEST_P(TeamTest, AStopEndsTheJobAndGoesOnInTheCaller) {
  Team team(GetParam());
  std::atomic<int> runs = 0;
  EXPECT_THROW(team.Share(
                   1000,
                   [&](int piece) {
                     ++runs;
                     if (piece == 3) throw Stopped();
                     while (piece > 3 && !team.IsStopped()) std::this_thread::yield();
                   },
                   Nothing),
               Stopped);
  EXPECT_LE(runs, 4 + GetParam());
}

TEST_P(TeamTest, BringsTheArithmeticFaultsOfAllPiecesToTheCaller) {
  Team team(GetParam());
  for (int guilty = 0; guilty < 12; ++guilty) {
    std::feclearexcept(FE_ALL_EXCEPT);
    volatile double zero = 0;
    volatile double result = 0;
    team.Share(
        12,
        [&](int piece) {
          if (piece == guilty) result = 1 / zero;
        },
        Nothing);
    EXPECT_EQ(std::fetestexcept(FE_DIVBYZERO | FE_INVALID | FE_OVERFLOW), FE_DIVBYZERO);
    std::feclearexcept(FE_ALL_EXCEPT);
    team.Share(
        12, [](int) {}, Nothing);
    EXPECT_EQ(std::fetestexcept(FE_ALL_EXCEPT), 0) << "a fault of an earlier job came again";
  }
}

TEST_P(TeamTest, KeepsTheFaultsThatTheCallerHadBefore) {
  Team team(GetParam());
  std::feclearexcept(FE_ALL_EXCEPT);
  std::feraiseexcept(FE_OVERFLOW);
  team.Share(
      12, [](int) {}, Nothing);
  EXPECT_NE(std::fetestexcept(FE_OVERFLOW), 0);
  std::feclearexcept(FE_ALL_EXCEPT);
}

TEST_P(TeamTest, APieceThatSharesRunsItsPiecesItself) {
  Team team(GetParam());
  std::atomic<int> runs = 0;
  team.Share(
      6,
      [&](int) {
        const int member = Team::Member();
        team.Share(
            4,
            [&](int) {
              EXPECT_EQ(Team::Member(), member);
              ++runs;
            },
            Nothing);
      },
      Nothing);
  EXPECT_EQ(runs, 24);
}

TEST_P(TeamTest, TwoThreadsThatShareAtOnceBothEnd) {
  Team team(GetParam());
  std::atomic<int> runs = 0;
  const auto share = [&] {
    for (int job = 0; job < 200; ++job) {
      team.Share(
          7, [&](int) { ++runs; }, Nothing);
    }
  };
  std::thread other(share);
  share();
  other.join();
  EXPECT_EQ(runs, 2 * 200 * 7);
}

TEST(TeamOfSeveralTest, RunsPiecesSideBySide) {
  Team team(3);
  Meeting meeting(3);
  std::vector<int> members(3, -1);
  team.Share(
      3,
      [&](int piece) {
        meeting.Come();
        members[piece] = Team::Member();
      },
      Nothing);
  std::sort(members.begin(), members.end());
  EXPECT_EQ(members, (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(Team::Member(), 0);
}

TEST(TeamOfSeveralTest, CallsBackWhileTheCallerWaits) {
  Team team(2);
  Meeting begun(2);
  std::atomic<bool> called = false;
  team.Share(
      2,
      [&](int) {
        begun.Come();
        if (Team::Member() == 0) return;
        while (!called) std::this_thread::yield();
      },
      [&] { called = true; });
  EXPECT_TRUE(called);
}

TEST(TeamOfSeveralTest, AStopWhileTheCallerWaitsReachesThePieces) {
  Team team(2);
  Meeting begun(2);
  EXPECT_THROW(team.Share(
                   2,
                   [&](int) {
                     begun.Come();
                     if (Team::Member() == 0) return;
                     while (!team.IsStopped()) std::this_thread::yield();
                   },
                   [] { throw Stopped(); }),
               Stopped);
}

TEST(TeamOfSeveralTest, DoesNotWaitForTheMembersOfAnotherThreadsJob) {
  Team team(2);
  Meeting begun(3);
  std::atomic<bool> over = false;
  std::thread other([&] {
    team.Share(
        2,
        [&](int) {
          begun.Come();
          while (!over) std::this_thread::yield();
        },
        Nothing);
  });
  begun.Come();
  std::atomic<int> runs = 0;
  team.Share(
      4, [&](int) { ++runs; }, Nothing);
  EXPECT_EQ(runs, 4);
  over = true;
  other.join();
}

TEST(TeamLimitTest, TakesAllCoresUnlessTheEnvironmentNamesFewer) {
  EXPECT_EQ(MembersFor(nullptr, 8), 8);
  EXPECT_EQ(MembersFor("0", 8), 8);
  EXPECT_EQ(MembersFor("3", 8), 3);
  EXPECT_EQ(MembersFor("1", 8), 1);
  EXPECT_EQ(MembersFor("100", 8), 8);
  EXPECT_EQ(MembersFor("-2", 8), 8);
  EXPECT_EQ(MembersFor("2 cores", 8), 8);
  EXPECT_EQ(MembersFor("", 8), 8);
  EXPECT_EQ(MembersFor(nullptr, 0), 1);
  EXPECT_EQ(MembersFor(nullptr, 1000), kMostMembers);
}

TEST(TeamLimitTest, TheTeamInUseIsTheOneOfTheTest) {
  Team team(3);
  Team& usual = SharedTeam();
  {
    const UseTeam use(team);
    EXPECT_EQ(&SharedTeam(), &team);
  }
  EXPECT_EQ(&SharedTeam(), &usual);
}

TEST(TeamOfSeveralTest, AThreadThatStaysAloneSharesNothing) {
  Team team(3);
  std::set<int> members;
  std::mutex mutex;
  {
    const StayAlone outer;
    {
      const StayAlone inner;
      EXPECT_FALSE(team.CanShare());
    }
    EXPECT_FALSE(team.CanShare());
    team.Share(
        64,
        [&](int) {
          std::this_thread::sleep_for(std::chrono::microseconds(100));
          const std::lock_guard lock(mutex);
          members.insert(Team::Member());
        },
        [] {});
  }
  EXPECT_TRUE(team.CanShare());
  EXPECT_EQ(members, std::set<int>{0});
}

}  // namespace
}  // namespace qmx
