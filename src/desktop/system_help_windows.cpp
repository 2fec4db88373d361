// SPDX-License-Identifier: MIT
#include <windows.h>

#include "desktop/system_help.h"
#include "desktop/wide_text.h"

namespace qmx {

namespace {

constexpr UINT kDisplayContents = 1;  // HH_DISPLAY_TOC

using HtmlHelpFunction = HWND(WINAPI*)(HWND, LPCWSTR, UINT, DWORD_PTR);

/// HTML Help is a part of the system that may be missing, so it is looked for when it is wanted.
HtmlHelpFunction FindHtmlHelp() {
  const HMODULE library = LoadLibraryExW(L"hhctrl.ocx", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (library == nullptr) return nullptr;
  const FARPROC found = GetProcAddress(library, "HtmlHelpW");
  return reinterpret_cast<HtmlHelpFunction>(reinterpret_cast<void*>(found));
}

/// HTML Help shows empty pages of files that came over a network, unless somebody has vouched for
/// them in their properties.
bool WouldShowNothing(const std::wstring& file) {
  const std::wstring drive = file.substr(0, file.find(L'\\') + 1);
  return file.starts_with(L"\\\\") || GetDriveTypeW(drive.c_str()) == DRIVE_REMOTE ||
         GetFileAttributesW((file + L":Zone.Identifier").c_str()) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace

bool ShowSystemHelp(std::uintptr_t window, const std::string& file) {
  static const HtmlHelpFunction htmlHelp = FindHtmlHelp();
  const std::wstring path = Wide(file);
  if (htmlHelp == nullptr || WouldShowNothing(path)) return false;
  htmlHelp(reinterpret_cast<HWND>(window), path.c_str(), kDisplayContents, 0);
  return true;
}

}  // namespace qmx
