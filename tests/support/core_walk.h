// SPDX-License-Identifier: MIT
#pragma once

#include <random>
#include <string>
#include <vector>

#include "commands/command_runner.h"
#include "support/core_bench.h"

namespace qmx::test {

/// A random step of a user: any command, with whatever is on the screen. Projects, matrices and
/// factors are opened from files named "p", "matrix" and "factors".
void TakeRandomStep(CommandRunner& runner, Workspace& workspace, RecordingScreen& screen,
                    std::mt19937& any);

/// A workbench whose commands go through the runner, as the windows send them.
class RunnerBench : public Workbench {
 public:
  /// What faults the runner has told.
  std::vector<Fault> faults;
  CommandRunner runner{context, [this](Fault fault) { faults.push_back(fault); }};

  /// What a saved project and a saved pair of factors would hold, and the rest of the Workspace.
  std::string Saved() const;
  /// All that the windows show, but for the results list and for which windows are shown.
  std::string Shown() const;

  /// A random step of a user: any command, with whatever is on the screen.
  void RandomStep(std::mt19937& any) { TakeRandomStep(runner, workspace, screen, any); }
};

}  // namespace qmx::test
