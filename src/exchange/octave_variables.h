// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "exchange/foreign_variable.h"

namespace qmx {

// The variables of a text file of GNU Octave and the lines in front of their elements.

enum class OctaveBody { kNumber, kMatrix, kDiagonal, kPermutation, kSparse, kRange };

/// A type of variable that can be read.
struct OctaveType {
  std::string_view name;
  OctaveBody body;
  bool integers = false;
};
/// Null for a type that cannot be read.
const OctaveType* FindOctaveType(std::string_view name);

/// A variable as it stands in the text.
struct OctaveVariable {
  ForeignVariable variable;
  std::size_t body = 0;  ///< Where the line behind its type begins.
};

/// Goes through a file and finds its variables, but not the parts of others. Refuses a text without
/// any and one with more than 10,000.
std::vector<OctaveVariable> FindOctaveVariables(std::string_view bytes);

/// The value of a line "# key: value"; nothing for any other line.
std::optional<std::string_view> OctaveValue(std::string_view line, std::string_view key);
/// True for a line that is no data.
bool IsOctaveComment(std::string_view line);
/// A text that is a count and nothing else.
std::optional<std::uint64_t> OctaveCount(std::string_view text);

}  // namespace qmx
