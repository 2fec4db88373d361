// SPDX-License-Identifier: MIT
#pragma once

#include <QPushButton>
#include <array>
#include <memory>
#include <vector>

#include "app/background_runs.h"
#include "app/desktop_screen.h"
#include "commands/command_runner.h"
#include "commands/steps_question.h"

namespace qmx {

/// Exact fractions in the windows of results, as long as `cmdFractions` is pressed there. They are
/// derived beside the windows. A window shows its elements again once it has another result; files,
/// steps of the history and projects know nothing of them.
class Fractions : public QObject {
  Q_OBJECT

 public:
  /// Without a deriver there are no buttons.
  Fractions(const Workspace& workspace, DesktopScreen& screen, CommandRunner& commands,
            const Deriver* deriver);
  ~Fractions() override { runs_.StopAll(); }

  /// Adds `cmdFractions` to the window of a result.
  void Attach(GridWindow& window);
  /// Something may have changed in the Workspace.
  void AfterCommand();
  void End() { runs_.StopAll(); }
  BackgroundRuns& Runs() { return runs_; }

 private:
  struct State {
    std::shared_ptr<const Computation> of;                  ///< Null while the button is up.
    std::shared_ptr<const std::vector<ExactNumber>> exact;  ///< Once it is known.
    BackgroundRuns::Ticket run;
  };

  void Press(Slot slot, bool down);
  void Find(Slot slot);
  void Take(Slot slot, BackgroundRuns::End end, std::vector<std::vector<ExactNumber>> all);
  void Release(Slot slot);
  void Show(Slot slot);
  QPushButton* Button(Slot slot) const;

  const Workspace& workspace_;
  DesktopScreen& screen_;
  CommandRunner& commands_;
  const Deriver* deriver_;
  BackgroundRuns runs_;
  std::array<State, kSlotCount> states_;
};

}  // namespace qmx
