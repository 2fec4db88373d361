// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace qmx {

/// What stands behind the program's name on its command line, as one text: it names a project, and
/// its blanks need no quoting. Where the system keeps the line as it was typed it stays so, quotes
/// with it; elsewhere the arguments stand side by side with a blank between them.
std::string CommandLine(int argc, char** argv);

/// What stands behind the program's name on a command line of Windows. The name may be in quotes;
/// without them it ends at its first blank, or behind the path of the program where the line begins
/// with that.
std::wstring_view BehindProgram(std::wstring_view line, std::wstring_view program);

}  // namespace qmx
