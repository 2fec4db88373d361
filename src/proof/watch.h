// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>

namespace qmx {

/// What a check of digits may take.
struct ProofLimits {
  /// Asked every few milliseconds; true ends the check. It may also throw what ends it.
  std::function<bool()> stop;
  double seconds = 5;     ///< Time at the most.
  std::size_t bytes = 0;  ///< Memory at the most; 0 for half of what the machine has to spare.
  std::int64_t bits = std::int64_t{1} << 20;  ///< Precision at the most.
};

/// Thrown inside of a check when it was asked to stop.
struct CheckStopped {};

/// Thrown inside of a check when its time, memory or precision is used up.
struct LimitReached {};

/// Holds a check to its limits.
class Watch {
 public:
  explicit Watch(const ProofLimits& limits);

  /// To be called at least every 10 ms. Throws CheckStopped or LimitReached.
  void Look() const;
  /// To be called before so much memory is taken, and before precision is raised to so many bits.
  /// Throws LimitReached.
  void Demand(double bytes) const;
  void Raise(std::int64_t bits) const;

 private:
  using Clock = std::chrono::steady_clock;
  const ProofLimits& limits_;
  Clock::time_point end_;
  double bytes_;
};

}  // namespace qmx
