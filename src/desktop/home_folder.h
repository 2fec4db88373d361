// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace qmx {

/// The home folder of a user; empty where there is no such user, or where users have no folders
/// that are known by their names.
std::string HomeFolderOf(const std::string& user);

/// True where a program's settings belong into a file among the application data and the toolkit,
/// if it is not told so, keeps them elsewhere.
bool KeepsSettingsInIniFiles();

}  // namespace qmx
