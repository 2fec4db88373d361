#pragma once

#include "workspace/ports.h"
#include "workspace/screen.h"
#include "workspace/workspace.h"

namespace qmx {

/// All that a command works with. The parts live as long as the program.
struct Context {
  Workspace& workspace;
  Screen& screen;
  FileStore& files;
  Printer& printer;
  Random& random;
  Clock& clock;
};

}  // namespace qmx
