// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace qmx {

/// What is said of a typed number that a double cannot hold to its last digit: "no more than 15 to
/// 17 digits can be held". Empty where it can, and where the text begins with no number.
std::string KeptNote(std::string_view typed);

}  // namespace qmx
