// SPDX-License-Identifier: MIT
#include "desktop/command_line.h"

namespace qmx {

std::string CommandLine(int argc, char** argv) {
  std::string line;
  for (int i = 1; i < argc; ++i) line += (i > 1 ? " " : "") + std::string(argv[i]);
  return line;
}

}  // namespace qmx
