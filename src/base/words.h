// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qmx {

// Parts of the sentences that users read.

/// "1 number", "3 numbers".
std::string CountOf(std::size_t count, std::string_view one);

/// A part of a file or of the clipboard in double quotes, fit for a message: its first characters,
/// on one line.
std::string Quoted(std::string_view text);

}  // namespace qmx
