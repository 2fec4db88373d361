// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace qmx {

/// Running text in UTF-8 as LaTeX writes it, in ASCII: what LaTeX reads as commands is escaped, a
/// character that it has no sign for is told by its number.
std::string LatexWords(std::string_view text);

/// The same for what stands in a formula: letters, figures and signs.
std::string LatexMath(std::string_view text);

}  // namespace qmx
