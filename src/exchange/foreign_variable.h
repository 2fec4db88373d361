// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace qmx {

/// One of the variables of a foreign file, as a list of them shows it.
struct ForeignVariable {
  std::string name = {};   ///< Empty in formats that hold one matrix without a name.
  std::string kind = {};   ///< What it is: "matrix", "float64", "complex", "text", ...
  std::string shape = {};  ///< "2 x 3", "2 x 3 x 4"; empty where it is not known before reading.
  /// Why it cannot be read, for a tool tip or a box; empty where it can, as far as can be said
  /// without reading its elements.
  std::string problem = {};
};

}  // namespace qmx
