// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qmx {

/// Composes lines item by item.
///
/// Numbers are printed with a blank (or their sign) in front and a blank behind, strings as they
/// are: Add("A("), Add(1), Add(","), Add(2), Add(")="), Add(2.5) gives "A( 1 , 2 )= 2.5 ".
class LineComposer {
 public:
  LineComposer& Add(std::string_view text);
  LineComposer& Add(int value);
  LineComposer& Add(double value);
  /// The next item starts at this column, counted from 1: of this line, or of the next one where
  /// this line is already past it.
  LineComposer& Tab(int column);
  /// Ends the line and starts a new one.
  void End();
  void EmptyLine() { End(); }
  void Line(std::string_view text) { Add(text).End(); }

  /// The lines that were ended; the composer has none afterwards.
  std::vector<std::string> Take() { return std::exchange(lines_, {}); }

 private:
  std::vector<std::string> lines_;
  std::string line_;
};

}  // namespace qmx
