// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace qmx {

/// Opens a compiled help file at its contents in the system's own viewer, owned by the window with
/// this handle. False where the system has no such viewer, or one that would show nothing of this
/// file. Whether the file exists is not checked: the viewer reports a missing one itself.
bool ShowSystemHelp(std::uintptr_t window, const std::string& file);

}  // namespace qmx
