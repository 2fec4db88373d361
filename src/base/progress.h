#pragma once

#include <exception>

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
  /// The part of the work that is done, 0 to 1. Called often; an implementation that paints must
  /// thin the calls out. May throw Stopped.
  virtual void Report([[maybe_unused]] double fraction) {}
};

}  // namespace qmx
