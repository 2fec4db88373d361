// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "derivation/document.h"

namespace qmx {

/// Text of several lines that stands in a line of other text: all lines are of the same width, and
/// one of them is level with what stands beside it.
struct TextBox {
  std::vector<std::string> rows;
  std::size_t middle = 0;
  int width = 0;

  /// A box of one line.
  static TextBox Of(const std::string& text);
  /// Sets another box to the right of this one.
  void Append(const TextBox& right);
};

/// A number in one line: "1/3", "0.5", or both: "1/3 (0.333333333333333)".
std::string NumberText(const ShownNumber& number, NumberForm form);

/// A matrix with brackets, bars and marks.
TextBox MatrixBox(const ShownMatrix& matrix, NumberForm form);

}  // namespace qmx
