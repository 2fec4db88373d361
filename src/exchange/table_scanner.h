// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "exchange/text_table.h"

namespace qmx {

/// A cell as it stands in a text.
struct TableCell {
  std::string_view text;  ///< Without blanks and the outer quotes around it.
  bool quoted = false;
};

/// Takes a text table apart, line by line and cell by cell.
class TableScanner {
 public:
  TableScanner(std::string_view bytes, const TableSettings& settings);

  /// Steps to the next line that is neither blank nor a comment; false at the end. What is left of
  /// the present line is skipped.
  bool NextRow();
  /// The next cell of the line; false after the last one. Behind a separator at the end of a line
  /// there is an empty cell, unless blanks separate.
  bool NextCell(TableCell& cell);
  /// The next cell if it is a plain number without quotes. False, and nothing has happened, where
  /// NextCell must have a closer look.
  bool NextNumber(double& value);
  /// True behind the last cell of the line.
  bool AtEndOfRow() const { return !moreCells_; }
  /// The numbers of the present line and of the cell read last, counted from 1.
  int Line() const;
  int Column() const { return column_; }
  /// How many bytes there are from the start of the present line.
  std::size_t BytesFromRow() const { return static_cast<std::size_t>(end_ - row_); }
  /// Which character ends the lines: '\n', or '\r' in a text that has no other.
  char LineEnd() const { return lineEnd_; }

 private:
  bool AtRowEnd(const char* at) const { return at == end_ || *at == lineEnd_; }
  bool IsBlank(char c) const {
    return c == ' ' || (c == '\t' && separator_ != '\t') || (c == '\r' && lineEnd_ != '\r');
  }
  const char* SkipBlanks(const char* at) const {
    while (at != end_ && IsBlank(*at)) ++at;
    return at;
  }
  const char* AfterCell(const char* at) const;
  const char* AfterQuotes(const char* at) const;
  const char* EndOfRow(const char* at) const;
  const char* ReadPlainNumber(const char* at, double& value) const;
  bool StepOver(const char* cellEnd);

  const char* start_;
  const char* end_;
  const char* row_;  ///< Where the present line starts.
  const char* at_;   ///< Where the next cell starts, or the line ends.
  bool moreCells_ = false;
  bool begun_ = false;
  int column_ = 0;
  char separator_;
  char decimalSign_;
  char commentSign_;
  char lineEnd_;
  bool hasQuotes_;
};

/// The number that a cell holds; nothing where it holds none. Knows the spellings that NextNumber
/// leaves aside.
bool ReadCellNumber(std::string_view cell, char decimalSign, double& value);

}  // namespace qmx
