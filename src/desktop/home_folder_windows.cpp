// SPDX-License-Identifier: MIT
#include "desktop/home_folder.h"

namespace qmx {

std::string HomeFolderOf(const std::string& /*user*/) { return {}; }

// The toolkit would write them to the registry.
bool KeepsSettingsInIniFiles() { return true; }

}  // namespace qmx
