// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "app/desktop_menu.h"
#include "app/desktop_screen.h"
#include "app/digit_checks.h"
#include "app/exchange_menu.h"
#include "app/fractions.h"
#include "app/frm_qmx.h"
#include "app/more_about_a.h"
#include "app/pictures.h"
#include "app/recent_projects.h"
#include "app/steps.h"
#include "base/fault.h"
#include "commands/command_runner.h"
#include "desktop/decimal_guard.h"
#include "desktop/last_session.h"
#include "grids/zoom.h"
#include "workspace/context.h"

namespace qmx {

/// The running program: the one Workspace, its windows, and how it begins and ends.
class Program {
 public:
  /// `prover` proves the digits of results in the background; without one nothing is told of them.
  /// `deriver` derives how they came about; without one nobody is told.
  Program(const SystemPorts& ports, RegionalSettings& settings, const Prover* prover = nullptr,
          const Deriver* deriver = nullptr);

  /// Shows the main window in its start state and opens the project that the command line names, if
  /// it names one. False, and nothing shown, if the user declines what the program needs.
  bool Start(const std::string& commandLine);

  /// Tells the user of a fault, offers to save the project, and ends the process with a failure
  /// status. Does not return.
  [[noreturn]] void EndAfterFault(Fault fault);

  frmQMX& MainWindow() { return window_; }
  DesktopScreen& Windows() { return screen_; }
  Workspace& State() { return workspace_; }
  Context& Commands() { return context_; }
  CommandRunner& Runner() { return commands_; }
  DigitChecks& Digits() { return digits_; }
  Steps& StepsOfResults() { return steps_; }
  Fractions& FractionsOfResults() { return fractions_; }
  MoreAboutA& AboutA() { return moreAboutA_; }

 private:
  void AfterCommand();
  void AnnounceComputed();
  /// A window of a matrix or of the results has been made.
  void Furnish(QWidget& window);
  LastSession::Compose CaptureSession() const;
  void OpenLastSession();
  void End();
  void OfferToSave(Fault fault);

  Workspace workspace_;
  frmQMX window_;
  DesktopScreen screen_;
  Context context_;
  CommandRunner commands_;
  Zoom zoom_;
  Pictures pictures_;
  DecimalGuard guard_;
  DesktopMenu desktop_;
  ExchangeMenu exchange_;
  RecentProjects recent_;
  std::unique_ptr<FileStore> stateFiles_;  ///< Of the session: they are written in the background.
  LastSession session_;
  DigitChecks digits_;
  Fractions fractions_;
  Steps steps_;
  MoreAboutA moreAboutA_;
  CommandRunner::Mark kept_;  ///< Of the state that the session was told of.
};

}  // namespace qmx
