// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace qmx {

// Windows alone: its calls take UTF-16, everything in the program is UTF-8. What is not well-formed
// becomes the replacement character.

std::wstring Wide(std::string_view text);
std::string Narrow(std::wstring_view text);

}  // namespace qmx
