// SPDX-License-Identifier: MIT
#include "desktop/system_clock.h"

#include <chrono>

namespace qmx {

std::uint64_t SystemClock::Ticks() {
  return static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count());
}

}  // namespace qmx
