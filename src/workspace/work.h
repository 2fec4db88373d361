// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "base/progress.h"

namespace qmx {

/// What whoever wants to change something meanwhile is told.
inline constexpr const char* kBusy =
    "Something is being computed. Stop it, or wait until it is done.";

/// Where computations run.
class Work {
 public:
  Work() = default;
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;
  virtual ~Work() = default;

  using Computation = std::function<void(Progress&)>;
  /// Runs a computation to its end while the windows show how far it is and what it does: "Reading
  /// a.qmx". What it throws comes out of here.
  virtual void Run(const Computation& computation, const std::string& doing) = 0;
  void Run(const Computation& computation) { Run(computation, "Computing"); }
};

}  // namespace qmx
