// SPDX-License-Identifier: MIT
#include <cstdlib>

#include "app/application.h"
#include "app/program.h"
#include "base/memory.h"
#include "derivation/derivation.h"
#include "desktop/command_line.h"
#include "desktop/desktop_printer.h"
#include "desktop/file_store_system.h"
#include "desktop/random_source.h"
#include "desktop/system_clock.h"
#include "proof/prover.h"

int main(int argc, char** argv) {
  qmx::KeepFreedMemory();
  qmx::Application application(argv);
  const auto files = qmx::MakeSystemFileStore();
  const auto settings = qmx::SystemRegionalSettings();
  // Without a printer the user names a file, in a dialog of the windows that are made below.
  qmx::Program* windows = nullptr;
  qmx::DesktopPrinter printer(*files, [&windows] { return windows->Windows().AskSaveFile({}); });
  qmx::RandomSource random;
  qmx::SystemClock clock;
#ifdef QMX_PROVER
  const qmx::Prover* prover = &qmx::BallProver();
#else
  const qmx::Prover* prover = nullptr;    // There is no library of ball arithmetic for this system.
#endif
#ifdef QMX_DERIVER
  const qmx::Deriver* deriver = &qmx::ExactDeriver();
#else
  const qmx::Deriver* deriver = nullptr;  // Nor one of exact fractions.
#endif
  qmx::Program program({*files, printer, random, clock, qmx::SystemMemory()}, *settings, prover,
                       deriver);
  windows = &program;
  application.SetFaultHandler([&](qmx::Fault fault) { program.EndAfterFault(fault); });
  bool started = false;
  application.Guard([&] { started = program.Start(qmx::CommandLine(argc, argv)); });
  return started ? application.exec() : EXIT_SUCCESS;
}
