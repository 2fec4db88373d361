// SPDX-License-Identifier: MIT
#include "base/lanes.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "base/spin.h"

namespace qmx {
namespace {

constexpr int kAllSteps = std::numeric_limits<int>::max();

}  // namespace

Lanes::Lanes(Team& team, Plan plan) : team_(team), plan_(std::move(plan)), steps_(plan_.finished) {
  for (const int width : plan_.widths) lanes_.push_back({width, 0, false});
}

bool Lanes::IsDone() const {
  const std::lock_guard lock(mutex_);
  return ended_ || AllDone();
}

bool Lanes::AllDone() const {
  return next_ >= steps_ && std::all_of(lanes_.begin(), lanes_.end(), [this](const Lane& lane) {
           return !lane.busy && lane.taken >= steps_;
         });
}

void Lanes::Begin() {
  const std::lock_guard lock(mutex_);
  shared_ = team_.WouldShare();
  leaving_ = false;
}

void Lanes::Work(Follow follow, Finish finish, Team::WhileWaiting whileWaiting) {
  const bool isCaller = Team::Member() == 0;
  Clock::duration longest{};
  std::unique_lock lock(mutex_);
  while (!ended_ && !leaving_) {
    const Task task = Claim();
    if (task.kind == Task::kNone) {
      if (isCaller ? AllDone() : !IsMoreToCome()) return;
      Wait(lock, longest, whileWaiting);
      continue;
    }
    lock.unlock();
    const Clock::time_point begin = Clock::now();
    const Outcome outcome = Run(task, follow, finish);
    longest = std::max(longest, Clock::now() - begin);
    const bool leaves = isCaller && team_.WouldShare() != shared_;
    lock.lock();
    leaving_ = leaving_ || leaves;
    Release(task, outcome);
  }
}

Lanes::Outcome Lanes::Run(const Task& task, Follow follow, Finish finish) {
  try {
    if (task.kind == Task::kFinish) return finish(task.first);
    follow(task.step, task.first, task.last);
    return Outcome::kGoOn;
  } catch (...) {
    const std::lock_guard lock(mutex_);
    ended_ = true;
    Tell();
    throw;
  }
}

/// The next lane first, which others wait for, then those that will be next.
Lanes::Task Lanes::Claim() {
  const int all = static_cast<int>(lanes_.size());
  const bool finishes = next_ < steps_ && !lanes_[next_].busy;
  if (finishes && lanes_[next_].taken < next_) {
    return Claimed({Task::kFollow, lanes_[next_].taken, next_, next_});
  }
  if (finishes && HasRoom()) return Claimed({Task::kFinish, next_, next_, next_});
  const Task behind = FurthestBack(next_, all);
  return Claimed(behind.kind != Task::kNone ? behind : FurthestBack(0, ReadyToFollow()));
}

/// So many of the finished lanes may take later steps.
int Lanes::ReadyToFollow() const {
  int ready = next_;
  if (plan_.afterwards != Finished::kFollowLater) return ready;
  for (int lane = next_; lane < static_cast<int>(lanes_.size()); ++lane) {
    ready = std::min(ready, lanes_[lane].taken);
  }
  return ready;
}

/// What lacks most of the lanes from..end - 1, with what lies beside it, up to one member's part.
Lanes::Task Lanes::FurthestBack(int from, int end) const {
  int first = -1;
  for (int lane = from; lane < end; ++lane) {
    if (Lacks(lane) && (first < 0 || lanes_[lane].taken < lanes_[first].taken)) first = lane;
  }
  if (first < 0) return {};
  const int step = lanes_[first].taken;
  int all = 0;
  for (int lane = first; lane < end; ++lane) {
    if (Lacks(lane) && lanes_[lane].taken == step) all += lanes_[lane].width;
  }
  const int most = std::min(plan_.most, all / team_.Members());
  int last = first;
  int width = lanes_[first].width;
  while (last + 1 < end && Lacks(last + 1) && lanes_[last + 1].taken == step) {
    width += lanes_[last + 1].width;
    if (width > most) break;
    ++last;
  }
  return {Task::kFollow, step, first, last};
}

Lanes::Task Lanes::Claimed(Task task) {
  if (task.kind == Task::kNone) return task;
  for (int lane = task.first; lane <= task.last; ++lane) lanes_[lane].busy = true;
  return task;
}

/// Whether nobody needs any more what the step of the next lane takes the place of.
bool Lanes::HasRoom() const {
  return plan_.kept == 0 || std::all_of(lanes_.begin(), lanes_.end(), [this](const Lane& lane) {
           return lane.taken > next_ - plan_.kept;
         });
}

/// Whether somebody who has nothing to do now may have something later.
bool Lanes::IsMoreToCome() const {
  return next_ < steps_ || std::any_of(lanes_.begin(), lanes_.end(), [this](const Lane& lane) {
           return lane.taken < steps_ - (lane.busy ? 1 : 0);
         });
}

void Lanes::Release(const Task& task, Outcome outcome) {
  for (int lane = task.first; lane <= task.last; ++lane) {
    lanes_[lane].busy = false;
    ++lanes_[lane].taken;
  }
  if (task.kind == Task::kFinish) {
    if (plan_.afterwards == Finished::kRest) lanes_[task.first].taken = kAllSteps;
    ++next_;
    if (outcome == Outcome::kLast) steps_ = next_;
    if (outcome == Outcome::kEnd) ended_ = true;
  }
  Tell();
}

void Lanes::Tell() {
  changes_.fetch_add(1, std::memory_order_release);
  if (sleeping_ > 0) changed_.notify_all();
}

/// Until something has changed.
void Lanes::Wait(std::unique_lock<std::mutex>& lock, Clock::duration longest,
                 Team::WhileWaiting whileWaiting) {
  const Clock::time_point begin = Clock::now();
  const unsigned seen = changes_.load(std::memory_order_relaxed);
  const auto hasChanged = [this, seen] { return changes_.load(std::memory_order_acquire) != seen; };
  lock.unlock();
  const bool soon = SpinFor(hasChanged);
  lock.lock();
  if (soon) return;
  ++sleeping_;
  while (!changed_.wait_for(lock, kLook, hasChanged)) {
    lock.unlock();
    try {
      whileWaiting();
    } catch (...) {
      lock.lock();
      --sleeping_;
      ended_ = true;
      Tell();
      throw;
    }
    lock.lock();
  }
  --sleeping_;
  if (Team::Member() == 0) team_.NoteWait(Clock::now() - begin, longest);
}

}  // namespace qmx
