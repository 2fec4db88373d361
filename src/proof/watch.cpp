// SPDX-License-Identifier: MIT
#include "proof/watch.h"

#include <algorithm>

#include "base/memory.h"

namespace qmx {

Watch::Watch(const ProofLimits& limits)
    : limits_(limits),
      end_(Clock::now() + std::chrono::duration_cast<Clock::duration>(
                              std::chrono::duration<double>(std::clamp(limits.seconds, 0.0, 1e8)))),
      bytes_(
          static_cast<double>(limits.bytes != 0 ? limits.bytes : SystemMemory().Available() / 2)) {}

void Watch::Look() const {
  if (limits_.stop && limits_.stop()) throw CheckStopped();
  if (Clock::now() > end_) throw LimitReached();
}

void Watch::Demand(double bytes) const {
  if (bytes > bytes_) throw LimitReached();
}

void Watch::Raise(std::int64_t bits) const {
  Look();
  if (bits > limits_.bits) throw LimitReached();
}

}  // namespace qmx
