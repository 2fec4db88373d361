// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "base/function_ref.h"
#include "base/progress.h"
#include "workspace/context.h"

namespace qmx {

// What the commands that read and write files tell the user, and how they write.

/// Tells what became of a file: 'The file "name" what', and why.
void ShowFileProblem(Context& context, const std::string& name, const std::string& what,
                     const std::string& problem);

/// The part of the time for a large file that goes to its numbers; the rest is the disk's.
inline constexpr double kNumbersPart = 0.8;

/// The last part of a path.
std::string BaseName(const std::string& path);

/// What the writing of a file is called while it goes on and when it is stopped: "Writing a.qmx".
std::string WritingOf(const std::string& name);

/// Writes the bytes that `compose` makes to a file, where computations run. False after a problem
/// that the user has been told.
bool WriteFile(Context& context, const std::string& name,
               FunctionRef<std::string(Progress&)> compose);

}  // namespace qmx
