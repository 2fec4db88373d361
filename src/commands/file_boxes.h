// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "base/function_ref.h"
#include "workspace/context.h"

namespace qmx {

// What the commands that read and write files tell the user, and how they write.

/// Tells what became of a file: 'The file "name" what', and why.
void ShowFileProblem(Context& context, const std::string& name, const std::string& what,
                     const std::string& problem);

/// Writes the bytes that `compose` makes to a file, where computations run. False after a problem
/// that the user has been told.
bool WriteFile(Context& context, const std::string& name, FunctionRef<std::string()> compose);

}  // namespace qmx
