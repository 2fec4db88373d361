// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace qmx {

/// The folder of a Windows path, without a trailing separator unless it is a root.
///   C:\Orvane\qmx.exe -> C:\Orvane   C:\qmx.exe -> C:\   qmx.exe -> (nothing)
std::string WindowsFolderOf(std::string_view path);

/// The path of the running executable on Windows.
std::wstring WindowsProgramPath();

}  // namespace qmx
