#pragma once

#include <string>
#include <string_view>

#include "workspace/ports.h"

namespace qmx {

/// Composes lines item by item for a printer that takes whole lines.
///
/// Numbers are printed with a blank (or their sign) in front and a blank behind, strings as they
/// are: Add("A("), Add(1), Add(","), Add(2), Add(")="), Add(2.5) gives "A( 1 , 2 )= 2.5 ".
class LineComposer {
 public:
  explicit LineComposer(Printer& printer) : printer_(printer) {}

  LineComposer& Add(std::string_view text);
  LineComposer& Add(int value);
  LineComposer& Add(double value);
  /// The next item starts at this column, counted from 1: of this line, or of the next one where
  /// this line is already past it.
  LineComposer& Tab(int column);
  /// Prints the line and starts a new one.
  void End();
  void EmptyLine() { End(); }
  void Line(std::string_view text) { Add(text).End(); }

 private:
  Printer& printer_;
  std::string line_;
};

}  // namespace qmx
