// SPDX-License-Identifier: MIT
#include "desktop/system_help.h"

namespace qmx {

bool ShowSystemHelp(std::uintptr_t, const std::string&) { return false; }

}  // namespace qmx
