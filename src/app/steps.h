// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <array>
#include <functional>
#include <memory>
#include <optional>

#include "app/derivation_runs.h"
#include "app/desktop_screen.h"
#include "app/frm_qmx.h"
#include "commands/command_runner.h"
#include "commands/steps_question.h"
#include "grids/document_window.h"

namespace qmx {

/// How results came about: a window with the derivation of each, opened from the windows of the
/// results, from beside the numbers and verdicts of the main window, and from the menu of the
/// tasks. A window keeps its document when its result changes, and says what has become of it.
class Steps : public QObject {
  Q_OBJECT

 public:
  /// Gives a new window its place on the screen and what all windows have.
  using Settle = std::function<void(DocumentWindow& window, std::optional<Slot> slot)>;

  /// Without a deriver there are no buttons, no entries and no windows.
  Steps(const Workspace& workspace, frmQMX& main, DesktopScreen& screen, CommandRunner& commands,
        const Deriver* deriver, Settle settle);
  ~Steps() override { CloseAll(); }

  /// Adds `cmdSteps` to the window of a result.
  void Attach(GridWindow& window);
  /// Something may have changed in the Workspace.
  void AfterCommand();
  /// Shows the steps of a result, unless something keeps them from being derived.
  void Show(Result result);
  /// Closes all windows and derives nothing any more.
  void CloseAll();

  /// The window of a result; null while there is none.
  DocumentWindow* Window(Result result) const { return shown_[result].window.data(); }
  DerivationRuns& Runs() { return runs_; }

 private:
  struct Shown {
    QPointer<DocumentWindow> window;
    std::shared_ptr<const Computation> of;
    int row = 0;
    int col = 0;
    DerivationRuns::Ticket run;
  };

  void WireScalars();
  void WireMenu();
  DocumentWindow& Make(Result result);
  void Derive(Result result);
  void Enable();
  std::string Note(Result result) const;

  const Workspace& workspace_;
  frmQMX& main_;
  DesktopScreen& screen_;
  CommandRunner& commands_;
  const Deriver* deriver_;
  Settle settle_;
  DerivationRuns runs_;
  std::array<Shown, kResultCount> shown_;
};

}  // namespace qmx
