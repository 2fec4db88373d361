// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace qmx::fuzz {

// Each gives bytes to one of the file commands, as the content of the file that the user names, and
// returns what is wrong with what came of it; nothing (an empty text) where all is well:
// - a refused file gives one message and leaves the Workspace and the windows as they were;
// - what was read can be saved, and what was saved reads back and is saved to the same bytes again.

std::string TryProject(std::string_view bytes);
std::string TryMatrix(std::string_view bytes);
std::string TrySystem(std::string_view bytes);
std::string TryFactors(std::string_view bytes);

struct Reader {
  const char* name;  ///< Also the name of its folder in the corpus.
  std::string (*run)(std::string_view);
};

inline constexpr Reader kReaders[] = {
    {"project", TryProject},
    {"matrix", TryMatrix},
    {"system", TrySystem},
    {"factors", TryFactors},
};

}  // namespace qmx::fuzz
