// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/matrix.h"
#include "base/memory.h"
#include "exchange/foreign_outcome.h"

namespace qmx {

// Tables of numbers in plain text: CSV and its relatives.
//
// A line is a row. Lines end with LF or CR LF, in a text without LF with CR. Blank lines do not
// count. Cells stand between separators, with any blanks and one pair of double quotes around them;
// in quotes a separator or a line end is text, and two quotes are one. A separator behind the last
// cell of every row is fine. A byte order mark of UTF-8 is skipped.
//
// A number has an optional sign (also the minus sign of Unicode), digits with an optional decimal
// sign, and an optional exponent after e, E, d or D. There are no signs between thousands. What has
// more digits than a double becomes the nearest double. Empty cells, words, infinite values and
// values that are no number are refused by line and column.

/// How a table is to be read. Line and column numbers in messages are those of the file, whatever
/// is left out as headings.
struct TableSettings {
  /// ',', ';', '\t', or ' ' for any run of blanks and tabs.
  char separator = ',';
  /// '.' or ','; not ',' where that separates.
  char decimalSign = '.';
  /// '#' or '%': lines that begin with it, after blanks, are left out; 0 for none.
  char commentSign = 0;
  /// How many lines at the top (comments and blank lines not counted) are headings. They need not
  /// have as many cells as the rows below.
  int headingRows = 0;
  /// How many cells at the start of each line are headings.
  int headingColumns = 0;

  friend bool operator==(const TableSettings&, const TableSettings&) = default;
};

/// What the bytes look like.
struct TableProposal {
  TableSettings settings;
  /// False where other separators or decimal signs fit as well and give other numbers ("1,5" may be
  /// one number or two): the user should have a look.
  bool certain = true;
};

/// Proposes settings from the first lines of a text. Never refuses; where nothing fits well,
/// reading with the proposal says what is wrong.
TableProposal ProposeTableSettings(std::string_view bytes);

/// Reads a table. Refuses what is no table of numbers, rows of unequal length, a table without
/// numbers, one beyond the memory at hand, and settings that cannot be. A text whose lines end
/// with CR LF must end with one, lest half a number be read from a file that was cut off; where a
/// last LF is missing the outcome has a note. Takes no memory but the matrix.
ForeignOutcome<Matrix> ReadTextTable(std::string_view bytes, const TableSettings& settings,
                                     const Memory& memory = SystemMemory());

/// A cell as the preview shows it.
struct PreviewCell {
  enum class Kind { kHeading, kNumber, kNoNumber };
  std::string text;  ///< On one line and not longer than some 40 characters.
  Kind kind = Kind::kNumber;
};

/// The first lines of a table as they are understood with given settings.
struct TablePreview {
  std::vector<std::vector<PreviewCell>> rows;  ///< Headings first; rows may differ in length.
  bool moreRows = false;                       ///< Rows or columns were left out.
  bool moreColumns = false;
};

/// Takes the first rows apart, at most so many rows and columns. Never refuses. Comments and blank
/// lines are left out.
TablePreview PreviewTextTable(std::string_view bytes, const TableSettings& settings, int mostRows,
                              int mostColumns);

/// A table as text, exactly: each number with the fewest digits that read back to it (15 where
/// these do), a line for each row that ends with CR LF, no headings. Refuses a decimal comma where
/// a comma separates, and an element that is no finite number.
ForeignOutcome<std::string> WriteTextTable(const Matrix& values, char separator, char decimalSign);

}  // namespace qmx
