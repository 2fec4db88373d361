// SPDX-License-Identifier: MIT
#include <windows.h>

#include "desktop/system_help.h"

namespace qmx {

namespace {

constexpr UINT kDisplayContents = 1;  // HH_DISPLAY_TOC

using HtmlHelpFunction = HWND(WINAPI*)(HWND, LPCSTR, UINT, DWORD_PTR);

/// HTML Help is a part of the system that may be missing, so it is looked for when it is wanted.
HtmlHelpFunction FindHtmlHelp() {
  const HMODULE library = LoadLibraryA("hhctrl.ocx");
  if (library == nullptr) return nullptr;
  const FARPROC found = GetProcAddress(library, "HtmlHelpA");
  return reinterpret_cast<HtmlHelpFunction>(reinterpret_cast<void*>(found));
}

}  // namespace

bool ShowSystemHelp(std::uintptr_t window, const std::string& file) {
  static const HtmlHelpFunction htmlHelp = FindHtmlHelp();
  if (htmlHelp == nullptr) return false;
  htmlHelp(reinterpret_cast<HWND>(window), file.c_str(), kDisplayContents, 0);
  return true;
}

}  // namespace qmx
