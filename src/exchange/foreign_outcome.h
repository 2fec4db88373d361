// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace qmx {

/// What came of reading or writing in the form of another program: the content, or a refusal in
/// words for the user that do not name the file.
template <class Content>
struct ForeignOutcome {
  Content content{};
  /// Why there is no content: "Line 3, column 2: expected a number, but found "abc"."; empty where
  /// the content can be used.
  std::string problem;
  /// Where the refusal happened, counted from 1; 0 where it belongs to no place. In a text these
  /// are the line and the field of that line, in a file of binary numbers the row and the column.
  int line = 0;
  int column = 0;
  /// What the user should hear although the content can be used; mostly empty.
  std::string note;

  bool Ok() const { return problem.empty(); }
};

}  // namespace qmx
