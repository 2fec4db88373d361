// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "workspace/context.h"

namespace qmx {

/// Writes the lines of the results list to a text file that the user names, in UTF-8.
void SaveResults(Context& context, const std::vector<std::string>& lines);
/// Prints them.
void PrintResults(Context& context, const std::vector<std::string>& lines);

}  // namespace qmx
