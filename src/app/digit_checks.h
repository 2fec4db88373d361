// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <atomic>
#include <memory>

#include "app/desktop_screen.h"
#include "app/frm_qmx.h"
#include "app/scalar_proof.h"
#include "commands/command_runner.h"
#include "commands/digit_keeper.h"
#include "desktop/worker.h"

namespace qmx {

/// Has the digits of results checked in the background, one result after the other, and shows what
/// is found. The thread that checks has the lowest priority; it reads copies that share their
/// elements with the Workspace, and writes nothing. A computation ends the check that is under way;
/// it begins anew afterwards. Nobody ever waits for a check but the end of the program, which a
/// check reaches at its next look.
class DigitChecks : public QObject {
  Q_OBJECT

 public:
  /// Without a prover nothing is checked and nothing is shown.
  DigitChecks(const Workspace& workspace, frmQMX& window, DesktopScreen& screen,
              CommandRunner& commands, const Prover* prover);
  ~DigitChecks() override;

  /// Shows what is known of the results as they are now, and has the rest checked.
  void AfterCommand();
  /// Ends the check that is under way.
  void GiveWay() { stop_ = true; }
  /// The user wants a result to be checked, however long it takes, or wants that no longer.
  void Ask(Result result, bool wanted);
  /// Checks nothing any more.
  void End();

  /// True while nothing is being checked nor waits for it.
  bool IsIdle() const;

 Q_SIGNALS:
  /// A check has ended, and what it found is on show.
  void Checked();

 private:
  struct Job {
    DigitCheck check;
    std::optional<DigitFinding> finding;
  };

  Q_INVOKABLE void AfterCheck();
  void StartNext();
  void ShowAll();
  void ShowIn(GridWindow& window) const;
  void ShowBeside(ScalarProof& scalar) const;

  const Workspace& workspace_;
  DesktopScreen& screen_;
  CommandRunner& commands_;
  const Prover* prover_;
  QList<ScalarProof*> scalars_;
  DigitKeeper keeper_;
  /// The check that is under way. It is begun and let go here: as long as the worker reads them the
  /// elements have another owner, so that nobody writes them.
  std::unique_ptr<Job> job_;
  std::atomic<bool> stop_ = false;
  bool ended_ = false;
  Worker worker_;
};

}  // namespace qmx
