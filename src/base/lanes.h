// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <vector>

#include "base/function_ref.h"
#include "base/team.h"

namespace qmx {

/// Lanes, such as blocks of columns side by side, that wait for each other and for nothing else.
/// The leading ones are finished one after the other, each once it has taken the steps of all
/// before it; a lane that is finished has a step of its own that the lanes behind it take, and
/// where wanted those before it, too. Every lane takes its steps in order.
///
///       lane  0     1     2     3     4
///           +-----+-----+-----+-----+-----+     lane 2 may be finished while lane 4 still has to
///           |done | done| 0 1 | 0 1 | 0   |     take step 1: nobody waits for all others between
///           +-----+-----+-----+-----+-----+     two steps
///
/// Whoever has nothing to do gives the next lane what it lacks or finishes it; otherwise it goes on
/// with what is furthest back.
class Lanes {
 public:
  /// What a finished lane has to do with later steps.
  enum class Finished {
    kRest,
    kFollow,       ///< It takes them.
    kFollowLater,  ///< Once all lanes behind have taken its own step, which lies in the lane.
  };

  struct Plan {
    std::vector<int> widths;  ///< Of all lanes.
    int finished = 0;         ///< So many are finished; the others only take steps.
    int most = 1;             ///< Lanes take a step together as long as they are not wider.
    Finished afterwards = Finished::kRest;
    /// What a step consists of is kept until the lane so many behind is finished; 0 for ever.
    int kept = 0;
  };

  /// What a finished lane says of those behind it.
  enum class Outcome {
    kGoOn,
    kLast,  ///< They only take steps.
    kEnd,   ///< Nothing counts any more.
  };

  using Follow = FunctionRef<void(int step, int first, int last)>;
  using Finish = FunctionRef<Outcome(int lane)>;

  Lanes(Team& team, Plan plan);
  Lanes(const Lanes&) = delete;
  Lanes& operator=(const Lanes&) = delete;

  /// Whether all is done.
  bool IsDone() const;

  /// What every member of the team does, in the pieces of one job after another until all is done:
  /// follow(step, first, last) for lanes that take a step, side by side with others, and
  /// finish(lane). Returns where nothing is left that has not been begun, in the caller where all
  /// is done, or where the team should look anew whether it shares. `whileWaiting` is called by who
  /// waits, as by Team::Share. After an exception nothing else is begun.
  void Work(Follow follow, Finish finish, Team::WhileWaiting whileWaiting);

  /// To be called before each of the jobs.
  void Begin();

 private:
  using Clock = Team::Clock;
  struct Lane {
    int width = 0;
    int taken = 0;  ///< Steps; its own counts as one.
    bool busy = false;
  };
  struct Task {
    enum Kind { kNone, kFollow, kFinish } kind = kNone;
    int step = 0;
    int first = 0;
    int last = 0;
  };

  Task Claim();
  Task Claimed(Task task);
  Task FurthestBack(int from, int end) const;
  int ReadyToFollow() const;
  /// Whether a lane lacks a step that nobody gives it.
  bool Lacks(int lane) const { return !lanes_[lane].busy && lanes_[lane].taken < next_; }
  bool HasRoom() const;
  bool AllDone() const;
  bool IsMoreToCome() const;
  Outcome Run(const Task& task, Follow follow, Finish finish);
  void Release(const Task& task, Outcome outcome);
  void Tell();
  void Wait(std::unique_lock<std::mutex>& lock, Clock::duration longest,
            Team::WhileWaiting whileWaiting);

  Team& team_;
  const Plan plan_;
  mutable std::mutex mutex_;  ///< Of all that follows.
  std::condition_variable changed_;
  std::atomic<unsigned> changes_ = 0;  ///< Is looked at without it.
  int sleeping_ = 0;
  std::vector<Lane> lanes_;
  int next_ = 0;  ///< The lane to be finished next; so many steps can be taken.
  int steps_;     ///< So many there will be.
  bool ended_ = false;
  bool shared_ = false;   ///< Whether the running job is.
  bool leaving_ = false;  ///< Whether it ends.
};

}  // namespace qmx
