// SPDX-License-Identifier: MIT
#pragma once

#include "base/memory.h"
#include "workspace/dialogs.h"
#include "workspace/grids.h"
#include "workspace/panel.h"
#include "workspace/ports.h"
#include "workspace/view.h"
#include "workspace/windows.h"
#include "workspace/work.h"
#include "workspace/workspace.h"

namespace qmx {

/// What the program needs of the system it runs on.
struct SystemPorts {
  FileStore& files;
  Printer& printer;
  Random& random;
  Clock& clock;
  const Memory& memory;
};

/// All that a command works with. The parts live as long as the program.
struct Context {
  /// `screen` is all of the ports that commands reach the windows through.
  template <typename Screen>
  Context(Workspace& state, Screen& screen, const SystemPorts& system)
      : workspace(state),
        panel(screen),
        grids(screen),
        windows(screen),
        log(screen),
        work(screen),
        dialogs(screen),
        view(screen),
        files(system.files),
        printer(system.printer),
        random(system.random),
        clock(system.clock),
        memory(system.memory) {}

  Workspace& workspace;
  Panel& panel;
  Grids& grids;
  Windows& windows;
  Log& log;
  Work& work;
  Dialogs& dialogs;
  View& view;
  FileStore& files;
  Printer& printer;
  Random& random;
  Clock& clock;
  const Memory& memory;
};

}  // namespace qmx
