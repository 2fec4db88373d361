// SPDX-License-Identifier: MIT
#include <shlobj.h>
#include <windows.h>

#include "desktop/file_association.h"
#include "desktop/program_path.h"
#include "desktop/wide_text.h"

namespace qmx {
namespace {

constexpr const char* kClass = "Orvane";

std::string CommandKey() { return std::string(kClass) + "\\shell\\open\\command"; }

std::string CommandOf(const std::string& programFolder) { return programFolder + "\\qmx.exe %1"; }

/// Sets the default value of a key below another one, creating it.
void SetDefault(HKEY root, const std::string& key, const std::string& text) {
  HKEY handle = nullptr;
  if (RegCreateKeyExW(root, Wide(key).c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &handle,
                      nullptr) != ERROR_SUCCESS)
    return;
  const std::wstring value = Wide(text);
  RegSetValueExW(handle, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                 static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
  RegCloseKey(handle);
}

void WriteClass(HKEY classes, const std::string& programFolder) {
  SetDefault(classes, kClass, "My Application");
  SetDefault(classes, ".qmx", kClass);
  SetDefault(classes, CommandKey(), CommandOf(programFolder));
  SetDefault(classes, std::string(kClass) + "\\DefaultIcon", programFolder + "\\pi_data.ico");
}

/// True if the shell, which reads the classes of the machine and of the user as one, would start
/// the program of this folder.
bool ShellStarts(const std::string& programFolder) {
  const std::wstring expected = Wide(CommandOf(programFolder));
  std::wstring text(expected.size() + 1, L'\0');
  auto size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
  return RegGetValueW(HKEY_CLASSES_ROOT, Wide(CommandKey()).c_str(), nullptr, RRF_RT_REG_SZ,
                      nullptr, text.data(), &size) == ERROR_SUCCESS &&
         text.c_str() == expected;
}

}  // namespace

std::string WindowsFolderOf(std::string_view path) {
  const std::size_t separator = path.find_last_of("\\/");
  if (separator == std::string_view::npos) return {};
  const bool root = separator == 0 || (separator == 2 && path[1] == ':');
  return std::string(path.substr(0, root ? separator + 1 : separator));
}

std::wstring WindowsProgramPath() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

std::string ProgramFolder() { return WindowsFolderOf(Narrow(WindowsProgramPath())); }

void AssociateProjectFiles(const std::string& programFolder) {
  HKEY classes = nullptr;
  if (RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Classes", 0, nullptr, 0, KEY_WRITE, nullptr,
                      &classes, nullptr) == ERROR_SUCCESS) {
    WriteClass(classes, programFolder);
    RegCloseKey(classes);
  }
  // Not every system that is like Windows reads both.
  if (!ShellStarts(programFolder)) WriteClass(HKEY_CLASSES_ROOT, programFolder);
  SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
}

}  // namespace qmx
