// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace qmx {

/// The home folder of a user; empty where there is no such user, or where users have no folders
/// that are known by their names.
std::string HomeFolderOf(const std::string& user);

}  // namespace qmx
