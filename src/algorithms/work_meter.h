// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <atomic>
#include <utility>

#include "base/progress.h"
#include "base/team.h"

namespace qmx {

// What work of other kinds takes, in multiplications of the kernel. Rough, and for progress alone:
// nobody should see the bar stand still, or wait for a stop, while memory is read and written.

/// A number that is copied from one place in memory to another.
inline constexpr double kMovedNumber = 64;
/// A multiplication in a sum of one row, where each addition waits for the one before.
inline constexpr double kStepOfSum = 16;
/// A multiplication down a column, whose numbers lie in cache lines of their own.
inline constexpr double kStepDownColumn = 64;

/// What the other members of a team have done and the meter of the task does not know yet.
class OthersWork {
 public:
  explicit OthersWork(const Team& team) : team_(team) {}
  /// Throws Stopped where the task has been stopped.
  void Add(double work) {
    done_.fetch_add(work, std::memory_order_relaxed);
    if (team_.IsStopped()) throw Stopped();
  }
  double Take() { return done_.exchange(0, std::memory_order_relaxed); }

 private:
  const Team& team_;
  std::atomic<double> done_ = 0;
};

/// Adds up the work of a task, in multiplications of the kernel, and reports the part that is done
/// every millisecond or so. Reports never go back and never beyond 1.
class WorkMeter {
 public:
  /// `all` is the work that is expected.
  WorkMeter(Progress& progress, double all) : progress_(&progress), all_(all) {}
  /// The meter of another member's piece: tells the work to the meter of the task.
  explicit WorkMeter(OthersWork& told) : told_(&told) {}
  WorkMeter(const WorkMeter&) = delete;
  WorkMeter& operator=(const WorkMeter&) = delete;

  /// Some work is done. Throws what the report throws.
  void Add(double work) {
    done_ += work;
    if (done_ >= next_) [[unlikely]]
      Report();
  }
  /// There is more to be done than was known.
  void Expect(double more) { all_ += more; }
  /// All is done, whatever was expected.
  void End() {
    if (told_ != nullptr) return told_->Add(done_);
    progress_->Report(1);
  }
  /// Until it is told otherwise, adds up what these do as well; none where null.
  void ListenTo(OthersWork* others) { others_ = others; }
  /// Reports what is done by now, though there may be nothing new.
  void Look() { Report(); }

  /// The most that should be done without a call of Add.
  static constexpr double kMostAtOnce = 1e8;

 private:
  static constexpr double kBetweenReports = 2e7;

  void Report() {
    if (told_ != nullptr) {
      told_->Add(std::exchange(done_, 0));
      return;
    }
    if (others_ != nullptr) done_ += others_->Take();
    next_ = done_ + kBetweenReports;
    // All that was expected may be nothing, and so may be what is done.
    const double all = std::max({all_, done_, 1.0});
    reported_ = std::max(reported_, done_ / all);
    progress_->Report(reported_);
  }

  Progress* progress_ = nullptr;
  OthersWork* told_ = nullptr;
  OthersWork* others_ = nullptr;
  double all_ = 0;
  double done_ = 0;
  double next_ = kBetweenReports;
  double reported_ = 0;
};

}  // namespace qmx
