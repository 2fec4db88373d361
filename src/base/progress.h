// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <utility>

namespace qmx {

/// Thrown out of a computation that the user has stopped. It is no fault: nothing was published
/// yet, and whoever began the command brings back what it had changed before.
class Stopped : public std::exception {
 public:
  const char* what() const noexcept override { return "stopped"; }
};

/// What a long computation tells how far it is. The default listens to nothing.
class Progress {
 public:
  Progress() = default;
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  virtual ~Progress() = default;
  /// The part of the work that is done, 0 to 1. Called every few milliseconds; an implementation
  /// that paints must thin the calls out. May throw Stopped.
  virtual void Report([[maybe_unused]] double fraction) {}
};

/// One that listens to nothing, for whoever has none.
inline Progress& NoProgress() {
  static Progress none;
  return none;
}

/// Reports the part from..to of a longer task.
class Stage : public Progress {
 public:
  Stage(Progress& whole, double from, double to) : whole_(whole), from_(from), to_(to) {}
  void Report(double fraction) override { whole_.Report(from_ + (to_ - from_) * fraction); }

 private:
  Progress& whole_;
  double from_;
  double to_;
};

/// Runs what changes a state in place, which is as it was before where the run is stopped.
template <class State, class Run>
auto UnchangedIfStopped(State& state, Run run) {
  State before = state;
  try {
    return run();
  } catch (const Stopped&) {
    state = std::move(before);
    throw;
  }
}

}  // namespace qmx
