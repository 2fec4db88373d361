// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>

#include "base/progress.h"

namespace qmx {

// What work of other kinds takes, in multiplications of the kernel. Rough, and for progress alone:
// nobody should see the bar stand still, or wait for a stop, while memory is read and written.

/// A number that is copied from one place in memory to another.
inline constexpr double kMovedNumber = 64;
/// A multiplication in a sum of one row, where each addition waits for the one before.
inline constexpr double kStepOfSum = 16;
/// A multiplication down a column, whose numbers lie in cache lines of their own.
inline constexpr double kStepDownColumn = 64;

/// Adds up the work of a task, in multiplications of the kernel, and reports the part that is done
/// every millisecond or so. Reports never go back and never beyond 1.
class WorkMeter {
 public:
  /// `all` is the work that is expected.
  WorkMeter(Progress& progress, double all) : progress_(progress), all_(all) {}
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
  void End() { progress_.Report(1); }

  /// The most that should be done without a call of Add.
  static constexpr double kMostAtOnce = 1e8;

 private:
  static constexpr double kBetweenReports = 2e7;

  void Report() {
    next_ = done_ + kBetweenReports;
    // All that was expected may be nothing: this is only called with some work done.
    reported_ = std::max(reported_, std::min(done_ / std::max(all_, done_), 1.0));
    progress_.Report(reported_);
  }

  Progress& progress_;
  double all_;
  double done_ = 0;
  double next_ = kBetweenReports;
  double reported_ = 0;
};

}  // namespace qmx
