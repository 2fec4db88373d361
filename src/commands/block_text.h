// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "workspace/text_block.h"

namespace qmx {

/// A block of numbers as the clipboard brings it.
struct NumberBlock {
  TextBlock texts;             ///< As they would be typed: no blanks or quotes around them.
  std::vector<double> values;  ///< Row by row.
  /// Why the text is no block of numbers, to be said after "The block cannot be pasted: "; empty
  /// where it is one.
  std::string problem;
};

/// Reads a text as a block of numbers: a line for each row, which ends with LF, CR LF or CR, the
/// end of the last one may be missing or there may be empty lines behind it.
///
/// Numbers of a row are separated by tabs; in a text without tabs by semicolons; in a text without
/// these by commas, unless what stands around a comma may be one number ("1,5", "1,234"); in a text
/// without any of them by blanks. A number may have blanks and one pair of double quotes around it
/// and the minus sign of Unicode. The decimal point is ".", and there are no thousands separators.
///
/// Decimal commas are read where the text cannot mean anything else: there is no point in it, one
/// of its commas does not stand before exactly three digits, and commas would not separate numbers
/// of rows of equal length. Such texts get points in the block.
///   "1,5\t2" -> 1.5, 2   "1,5 2,25" -> 1.5, 2.25   "1,5\n2\n" -> 1.5 and 2 in a column
///   "1,5" and "1,234\t2" may mean several things and are refused
///
/// A problem names the first bad cell or row of the block, counted from 1, and what stands there.
NumberBlock ReadNumberBlock(std::string_view text);

/// A single text without the blanks, line ends and quotes around it and with a plain minus sign.
std::string PlainCellText(std::string_view text);

}  // namespace qmx
