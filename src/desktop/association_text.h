// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace qmx {

// The texts that a desktop entry and a list of default applications are made of.

/// A path as one argument of a desktop entry's Exec line: quoted, with what the quotes, the field
/// codes and the file's own strings give a meaning escaped.
///   /opt/a b/qmx.exe -> "/opt/a b/qmx.exe"   /opt/$x/100%/qmx.exe -> "/opt/\\$x/100%%/qmx.exe"
std::string ExecArgument(std::string_view path);

/// What starts the program at a path from an Exec line.
std::string ExecCommand(std::string_view program);

/// A desktop entry whose Exec line starts the program at this path with the opened file as its only
/// argument. `entry` has one Exec line.
std::string WithProgram(std::string_view entry, std::string_view program);

/// The text of a mimeapps.list in which `entry` is the default application of `type`. Everything
/// else in it stays as it is.
std::string WithDefaultApplication(std::string_view list, std::string_view type,
                                   std::string_view entry);

}  // namespace qmx
