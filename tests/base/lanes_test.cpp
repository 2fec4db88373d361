// SPDX-License-Identifier: MIT
#include "base/lanes.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <mutex>
#include <new>
#include <optional>
#include <thread>
#include <vector>

#include "base/machine_load.h"
#include "base/progress.h"
#include "support/core_meeting.h"

namespace qmx {
namespace {

using testing::Meeting;

using Finished = Lanes::Finished;
using Outcome = Lanes::Outcome;

void Nothing() {}

/// So many lanes of these widths in turn.
Lanes::Plan PlanOf(int lanes, int finished, Finished afterwards = Finished::kRest) {
  Lanes::Plan plan;
  for (int lane = 0; lane < lanes; ++lane) plan.widths.push_back(1 + lane % 3);
  plan.finished = finished;
  plan.most = 4;
  plan.afterwards = afterwards;
  return plan;
}

void RunAll(Team& team, Lanes& lanes, Lanes::Follow follow, Lanes::Finish finish,
            Team::WhileWaiting whileWaiting = Nothing) {
  while (!lanes.IsDone()) {
    lanes.Begin();
    team.Share(
        team.Members(), [&](int) { lanes.Work(follow, finish, whileWaiting); }, Nothing);
  }
}

/// What happened to each lane: the steps that it took, and its own where it was finished.
struct Diary {
  explicit Diary(const Lanes::Plan& ofThis) : plan(ofThis), steps(plan.widths.size()) {}

  void Follow(int step, int first, int last) {
    const std::lock_guard lock(mutex);
    int width = 0;
    for (int lane = first; lane <= last; ++lane) {
      steps[lane].push_back(step);
      width += plan.widths[lane];
      if (step >= static_cast<int>(isFinished.size()) || !isFinished[step]) ++early;
    }
    if (first != last && width > plan.most) ++wide;
  }
  void Finish(int lane) {
    const std::lock_guard lock(mutex);
    if (lane != static_cast<int>(isFinished.size())) ++early;
    isFinished.push_back(true);
    steps[lane].push_back(lane);
  }

  const Lanes::Plan plan;
  std::mutex mutex;
  std::vector<std::vector<int>> steps;
  std::vector<bool> isFinished;
  int early = 0;  ///< How often a step was taken before its lane was finished.
  int wide = 0;
};

/// Writes down all that is done in the lanes, of which this one says that it is the last.
void RunAll(Team& team, Lanes& lanes, Diary& diary, int last = -1) {
  RunAll(
      team, lanes, [&](int step, int first, int end) { diary.Follow(step, first, end); },
      [&](int lane) {
        diary.Finish(lane);
        return lane == last ? Outcome::kLast : Outcome::kGoOn;
      });
}

std::vector<int> UpTo(int steps) {
  std::vector<int> all;
  for (int step = 0; step < steps; ++step) all.push_back(step);
  return all;
}

class LanesTest : public ::testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(OfTeams, LanesTest, ::testing::Values(1, 2, 3, 7, 64));

TEST_P(LanesTest, EveryLaneTakesAllStepsInOrder) {
  Team team(GetParam());
  for (const Finished afterwards : {Finished::kRest, Finished::kFollow, Finished::kFollowLater}) {
    for (int finished = 0; finished <= 9; ++finished) {
      for (int others = 0; others < 4; ++others) {
        const Lanes::Plan plan = PlanOf(finished + others, finished, afterwards);
        Diary diary(plan);
        Lanes lanes(team, plan);
        RunAll(team, lanes, diary);
        EXPECT_TRUE(lanes.IsDone());
        for (int lane = 0; lane < finished + others; ++lane) {
          const bool rests = lane < finished && afterwards == Finished::kRest;
          EXPECT_EQ(diary.steps[lane], UpTo(rests ? lane + 1 : finished)) << "lane " << lane;
        }
        EXPECT_EQ(diary.early, 0);
        EXPECT_EQ(diary.wide, 0);
      }
    }
  }
}

TEST_P(LanesTest, AfterTheLastOneTheOthersOnlyTakeItsStep) {
  Team team(GetParam());
  const Lanes::Plan plan = PlanOf(8, 6, Finished::kFollow);
  Diary diary(plan);
  Lanes lanes(team, plan);
  RunAll(team, lanes, diary, 3);
  for (const std::vector<int>& steps : diary.steps) EXPECT_EQ(steps, UpTo(4));
}

TEST_P(LanesTest, AnEndLeavesWhatHasNotBegun) {
  Team team(GetParam());
  const Lanes::Plan plan = PlanOf(70, 70);
  Lanes lanes(team, plan);
  std::atomic<int> behind = 0;
  RunAll(
      team, lanes, [&](int step, int, int) { behind += step == 2 ? 1 : 0; },
      [&](int lane) { return lane == 2 ? Outcome::kEnd : Outcome::kGoOn; });
  EXPECT_TRUE(lanes.IsDone());
  EXPECT_EQ(behind, 0);
}

TEST_P(LanesTest, KeepsAStepUntilAllHaveTakenIt) {
  Team team(GetParam());
  for (int kept = 1; kept <= 3; ++kept) {
    Lanes::Plan plan = PlanOf(12, 12, Finished::kFollow);
    plan.kept = kept;
    std::vector<std::atomic<int>> taken(12);
    std::atomic<int> lost = 0;
    Lanes lanes(team, plan);
    RunAll(
        team, lanes, [&](int step, int first, int last) { taken[step] += last - first + 1; },
        [&](int lane) {
          if (lane >= kept && taken[lane - kept] < 11) ++lost;
          return Outcome::kGoOn;
        });
    EXPECT_EQ(lost, 0);
    for (const std::atomic<int>& lanesThatTook : taken) EXPECT_EQ(lanesThatTook, 11);
  }
}

TEST_P(LanesTest, FollowsLaterOnlyOnceAllBehindHaveTakenItsOwnStep) {
  Team team(GetParam());
  constexpr int kLanes = 14;
  for (int round = 0; round < 20; ++round) {
    std::vector<std::atomic<int>> behind(kLanes);
    std::atomic<int> early = 0;
    Lanes lanes(team, PlanOf(kLanes, kLanes, Finished::kFollowLater));
    RunAll(
        team, lanes,
        [&](int step, int first, int last) {
          for (int lane = first; lane <= last; ++lane) {
            if (lane < step && behind[lane] < kLanes - 1 - lane) ++early;
            if (lane % 5 == round % 5) std::this_thread::yield();
          }
          if (first > step) behind[step] += last - first + 1;
        },
        [](int) { return Outcome::kGoOn; });
    EXPECT_EQ(early, 0);
  }
}

TEST_P(LanesTest, AFaultInALaneArrivesAtTheCallerAndEndsAll) {
  Team team(GetParam());
  for (const bool finishing : {false, true}) {
    Lanes lanes(team, PlanOf(9, 9));
    const auto run = [&] {
      RunAll(
          team, lanes,
          [&](int step, int, int last) {
            if (!finishing && step == 2 && last == 8) throw std::bad_alloc();
          },
          [&](int lane) {
            if (finishing && lane == 4) throw std::bad_alloc();
            return Outcome::kGoOn;
          });
    };
    EXPECT_THROW(run(), std::bad_alloc);
    EXPECT_TRUE(lanes.IsDone());
  }
}

TEST(LanesAtWorkTest, NobodyWaitsForAllOthersBetweenTwoSteps) {
  Team team(2);
  // One lane is still without the first step when the second one is ready and taken.
  Meeting second(2);
  Lanes::Plan plan = PlanOf(4, 2);
  plan.most = 1;
  Lanes lanes(team, plan);
  RunAll(
      team, lanes,
      [&](int step, int first, int) {
        if ((step == 0 && first == 3) || (step == 1 && first == 2)) second.Come();
      },
      [](int) { return Outcome::kGoOn; });
  EXPECT_TRUE(lanes.IsDone());
}

TEST(LanesAtWorkTest, ACallerThatWaitsLooksAndMayStopAll) {
  Team team(2);
  Meeting begun(2);
  std::atomic<bool> looked = false;
  Lanes::Plan plan = PlanOf(3, 2);
  plan.most = 1;
  Lanes lanes(team, plan);
  const auto run = [&] {
    RunAll(
        team, lanes,
        [&](int step, int, int) {
          if (step != 0) return;
          begun.Come();
          while (Team::Member() != 0 && !looked) std::this_thread::yield();
        },
        [](int) { return Outcome::kGoOn; },
        [&] {
          if (Team::Member() != 0) return;
          looked = true;
          throw Stopped();
        });
  };
  EXPECT_THROW(run(), Stopped);
  EXPECT_TRUE(lanes.IsDone());
}

/// A machine that is idle until somebody comes.
class SomeLoad : public MachineLoad {
 public:
  std::optional<int> Running() const override { return running_; }
  int Cores() const override { return 2; }
  void Become(int running) { running_ = running; }

 private:
  std::atomic<int> running_ = 1;
};

TEST(LanesAtWorkTest, GoesOnAloneWhereAnotherProgramComes) {
  SomeLoad load;
  Team team(2, &load);
  const Lanes::Plan plan = PlanOf(40, 40);
  Lanes lanes(team, plan);
  Diary diary(plan);
  std::atomic<bool> isBusy = false;
  std::atomic<int> byOthers = 0;
  int jobs = 0;
  // At the caller's first task, or while it waits for the other one, who may have been the first.
  const auto comeAtOnce = [&] {
    if (Team::Member() != 0) {
      while (!isBusy) std::this_thread::yield();
    } else if (!isBusy) {
      load.Become(9);
      isBusy = true;
      // What the team knew is too old by then.
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
  };
  while (!lanes.IsDone()) {
    lanes.Begin();
    const bool alone = isBusy;
    const auto follow = [&](int step, int first, int last) {
      diary.Follow(step, first, last);
      comeAtOnce();
      if (alone && Team::Member() != 0) ++byOthers;
    };
    const auto finish = [&](int lane) {
      diary.Finish(lane);
      comeAtOnce();
      return Outcome::kGoOn;
    };
    team.Share(
        2, [&](int) { lanes.Work(follow, finish, comeAtOnce); }, Nothing);
    ++jobs;
  }
  EXPECT_EQ(byOthers, 0);
  EXPECT_GT(jobs, 1);
  for (int lane = 0; lane < 40; ++lane) EXPECT_EQ(diary.steps[lane], UpTo(lane + 1));
}

}  // namespace
}  // namespace qmx
