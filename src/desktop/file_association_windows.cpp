// SPDX-License-Identifier: MIT
#include <shlobj.h>
#include <windows.h>

#include <array>

#include "desktop/file_association.h"
#include "desktop/program_path.h"

namespace qmx {

namespace {

constexpr DWORD kTextLength = 260;  // The length argument of the values that hold a path.

/// Creates or opens a key under HKEY_CLASSES_ROOT and sets the default value of one of its subkeys,
/// or its own for an empty subkey.
void SetDefault(const char* key, const char* subkey, const std::string& text, DWORD length) {
  HKEY handle = nullptr;
  if (RegCreateKeyA(HKEY_CLASSES_ROOT, key, &handle) != ERROR_SUCCESS) return;
  RegSetValueA(handle, subkey, REG_SZ, text.c_str(), length);
  RegCloseKey(handle);
}

}  // namespace

std::string WindowsFolderOf(std::string_view path) {
  const std::size_t separator = path.find_last_of("\\/");
  if (separator == std::string_view::npos) return {};
  const bool root = separator == 0 || (separator == 2 && path[1] == ':');
  return std::string(path.substr(0, root ? separator + 1 : separator));
}

std::string ProgramFolder() {
  std::array<char, 32768> path{};
  const DWORD length = GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size()));
  return WindowsFolderOf({path.data(), length});
}

void AssociateProjectFiles(const std::string& programFolder) {
  SetDefault("Orvane", "", "My Application", 0);
  SetDefault(".qmx", "", "Orvane", 0);
  SetDefault("Orvane", "shell\\open\\command", programFolder + "\\qmx.exe %1", kTextLength);
  SetDefault("Orvane", "DefaultIcon", programFolder + "\\pi_data.ico", kTextLength);
  SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
}

}  // namespace qmx
