// SPDX-License-Identifier: MIT
#include <pwd.h>

#include "desktop/home_folder.h"

namespace qmx {

std::string HomeFolderOf(const std::string& user) {
  const passwd* entry = getpwnam(user.c_str());
  return entry == nullptr || entry->pw_dir == nullptr ? std::string() : entry->pw_dir;
}

bool KeepsSettingsInIniFiles() { return false; }

}  // namespace qmx
