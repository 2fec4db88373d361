#pragma once

namespace qmx {

/// What a long computation tells how far it is. The default listens to nothing.
class Progress {
 public:
  Progress() = default;
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  virtual ~Progress() = default;
  /// The part of the work that is done, 0 to 1. Called often; an implementation that paints must
  /// thin the calls out.
  virtual void Report([[maybe_unused]] double fraction) {}
};

}  // namespace qmx
