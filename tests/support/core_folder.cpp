// SPDX-License-Identifier: MIT
#include "support/core_folder.h"

namespace qmx::test {

std::string SourceFolder() { return QMX_SOURCE_DIR; }

}  // namespace qmx::test
