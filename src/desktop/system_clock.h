// SPDX-License-Identifier: MIT
#pragma once

#include "workspace/ports.h"

namespace qmx {

/// The time of day, in the finest units that the machine tells.
class SystemClock : public Clock {
 public:
  std::uint64_t Ticks() override;
};

}  // namespace qmx
