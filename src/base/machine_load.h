// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

namespace qmx {

/// How busy the machine is, or what a test makes of it.
class MachineLoad {
 public:
  MachineLoad() = default;
  MachineLoad(const MachineLoad&) = delete;
  MachineLoad& operator=(const MachineLoad&) = delete;
  virtual ~MachineLoad() = default;
  /// Threads of all programs that have a core or wait for one at this moment, the one that asks
  /// among them; none where the system does not say. Takes less than a microsecond.
  virtual std::optional<int> Running() const;
  /// Cores of the machine, whether this program may use them or not.
  virtual int Cores() const;
};

/// The machine's.
const MachineLoad& SystemLoad();

}  // namespace qmx
