// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>

namespace qmx {

// The names of files are UTF-8 on Windows, and whatever bytes they have elsewhere. The standard
// library would take them for the letters of an older encoding there.

inline std::filesystem::path PathOf(const std::string& name) {
  return std::u8string(name.begin(), name.end());
}

inline std::string NameOf(const std::filesystem::path& path) {
  const std::u8string name = path.u8string();
  return {name.begin(), name.end()};
}

}  // namespace qmx
