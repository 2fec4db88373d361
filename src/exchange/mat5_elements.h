// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <string_view>

namespace qmx {

// What matio takes on trust in files of form 5: that a variable holds as many numbers as its shape
// says. Where it holds fewer, matio reads on in whatever follows.

/// Why the variables of a file cannot be read, by name, as far as the start of each tells; those
/// that seem well are not in it. The layout must have been checked (see CheckMatLayout).
std::map<std::string, std::string> ProblemsOfMat5(std::string_view bytes);

/// Refuses a variable of numbers that has not as many as its shape says, or whose compressed data
/// are damaged. The layout must have been checked.
void CheckMat5Variable(std::string_view bytes, const std::string& name);

}  // namespace qmx
