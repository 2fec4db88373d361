// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include "base/matrix.h"
#include "base/progress.h"

namespace qmx {

/// Builds the bytes of a file, record by record. Lines end with CR LF.
///
/// A delimited record holds its values on one line, separated by commas: Integer(2), Integer(3),
/// EndRecord() gives "2,3". A print record holds one value on a line of its own, with a blank (or
/// the sign) in front and a blank behind: PrintNumber(2.5) gives " 2.5 ".
///
/// A double is written so that it reads back exactly. Only a file written after a fault can meet
/// values that are no numbers: an infinity becomes the largest double, everything else zero.
class RecordWriter {
 public:
  /// Reserves room for so many numbers in print records, and reports how many are written.
  explicit RecordWriter(std::size_t numbers = 0, Progress& progress = NoProgress());

  void Flag(bool value);
  void Integer(int value);
  void Number(double value);
  void EndRecord();

  void PrintInteger(int value);
  void PrintNumber(double value);
  /// All elements row by row.
  void PrintNumbers(const Matrix& values);
  /// Text stands in a print record as it is.
  void PrintText(std::string_view text);

  std::string Take() { return std::move(bytes_); }

 private:
  void Separate();
  void PrintShared(const Matrix& values);
  void CountNumbers(std::size_t count);

  std::string bytes_;
  std::size_t expected_;
  std::size_t written_ = 0;   ///< Numbers in print records.
  std::size_t reported_ = 0;  ///< How many there were at the last report.
  Progress* progress_;
  bool recordStarted_ = false;
};

}  // namespace qmx
