// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace qmx {

/// A file's name as the calls of Windows take it: whole, and in the form that may be longer than
/// 260 characters.
///   C:\a\..\b.qmx -> \\?\C:\b.qmx   \\server\share\b.qmx -> \\?\UNC\server\share\b.qmx
struct SystemPath {
  std::wstring path;
  const char* problem = nullptr;  ///< Why there is none, in words for the user.
};

/// Refuses what names no file: nothing, a device, a stream inside a file, and names that are too
/// long for any disk.
SystemPath SystemPathOf(const std::string& name);

/// The folder of such a path, ready to be put before a file's name.
std::wstring SystemFolderOf(const std::wstring& path);

}  // namespace qmx
