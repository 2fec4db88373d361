// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "exchange/mat5_reader.h"
#include "exchange/mat_variable.h"

namespace qmx {

/// Goes over the variables of a file of form 5 in their order. Data without a name are left out:
/// they belong to objects that are listed by theirs, and so are empty ones. What does not begin as
/// a variable does is a damaged one. The layout must have been checked (see CheckMatLayout).
class Mat5Variables {
 public:
  explicit Mat5Variables(std::string_view bytes);

  /// Goes on to the next variable, at first to the first one; false where there is none.
  bool Next();
  const MatVariable& Variable() const { return variable_; }

  /// Why its elements cannot be read, as far as its start tells; empty where they seem well: a full
  /// matrix of numbers must have as many as its shape says.
  std::string ProblemOfStart() const;
  /// The same after going over all of it: compressed data must be whole.
  std::string ProblemOfWhole() const;
  /// A reader of it that stands before the elements behind its name.
  Mat5Reader Elements() const;

 private:
  std::string_view rest_;
  bool bigEndian_;
  std::uint32_t type_ = 0;
  std::string_view data_;
  MatVariable variable_;
};

// What matio takes on trust in files of form 5: that a variable holds as many numbers as its shape
// says. Where it holds fewer, matio reads on in whatever follows.

/// Why the variables of a file cannot be read, by name, as far as the start of each tells; those
/// that seem well are not in it. The layout must have been checked.
std::map<std::string, std::string> ProblemsOfMat5(std::string_view bytes);

/// Refuses a variable of numbers that has not as many as its shape says, or whose compressed data
/// are damaged. The layout must have been checked.
void CheckMat5Variable(std::string_view bytes, const std::string& name);

}  // namespace qmx
