// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/matrix.h"
#include "base/memory.h"
#include "base/progress.h"

namespace qmx {

/// Why a file was refused: where, and what should have stood there.
struct ReadProblem {
  int line = 0;  ///< Counted from 1.
  std::string expected;
  std::string found;  ///< What stands there instead.

  /// For the user: "Line 3: expected the number of columns, but found "abc"."
  std::string Text() const;
};

/// Reads the fields of a file one after the other, whichever kind of record they stand in.
///
/// A field starts after blanks (tabs count as blanks); before a number, an integer or a flag, empty
/// lines are skipped as well. It ends at a blank, a comma or the end of the line, text only at a
/// comma or the end of the line. Lines end with LF or CR LF. Where they end with CR LF, as the
/// program writes them, the last line must end too: a file that ends within a line was cut off, and
/// what stands there may be half a number. A file with plain LF was written by hand or by another
/// tool, and the end of its last line may be missing.
///
/// Each Read returns false where the field is not what it should be. The scanner then stands at
/// that field, and Refuse tells what was expected.
class FieldScanner {
 public:
  /// `memory` is where what is read must find room; what is read of many numbers is reported.
  explicit FieldScanner(std::string_view bytes, const Memory& memory = SystemMemory(),
                        Progress& progress = NoProgress())
      : start_(bytes.data()),
        at_(start_),
        end_(start_ + bytes.size()),
        memory_(&memory),
        progress_(&progress) {}

  bool ReadFlag(bool& value);
  bool ReadInteger(std::int32_t& value);
  /// Any finite decimal number.
  bool ReadNumber(double& value);
  /// Reads numbers until `count` are there or one cannot be read; returns how many were. Many are
  /// read side by side.
  std::size_t ReadNumbers(double* values, std::size_t count);
  /// Text up to the comma or the end of the line, without blanks around it; in double quotes it may
  /// hold a comma.
  bool ReadText(std::string& value);
  /// Steps over an empty line.
  bool ReadEmptyLine();
  /// True where nothing but blanks and empty lines is left.
  bool AtEnd();

  /// True if the rest of the file is long enough for so many numbers, at two bytes each but for the
  /// last one.
  bool CanHoldNumbers(std::uint64_t count) const {
    return count <= (static_cast<std::uint64_t>(end_ - at_) + 1) / 2;
  }
  /// True if a matrix of this size finds room in memory.
  bool HasRoomFor(int rows, int cols) const { return CanAllocate(rows, cols, *memory_); }
  /// The line of the field read last.
  int LineOfLast() const { return LineOf(lastField_); }
  std::size_t Size() const { return static_cast<std::size_t>(end_ - start_); }

  /// Notes that the field at which the scanner stands is not what was expected. Always false.
  bool Refuse(std::string expected);
  /// Notes that the field read last has a value that cannot be used. Always false.
  bool RefuseLast(std::string expected);
  /// The same where what was found is more than that field.
  bool RefuseLast(std::string expected, std::string found);
  const std::optional<ReadProblem>& Problem() const { return problem_; }
  /// The problem in words for the user; empty where there is none.
  std::string ProblemText() const { return problem_ ? problem_->Text() : std::string(); }

 private:
  struct Piece;
  /// Reads numbers as long as that takes whole rounds of pieces; returns how many.
  std::size_t ReadShared(double* values, std::size_t count);
  /// Reads the numbers whose fields begin before `end`.
  void ReadPiece(const char* end, Piece& piece);
  std::vector<Piece> PiecesFrom(const char* from) const;
  void ReportPlace();
  bool LastLineMayLackItsEnd() const;
  bool FinishField(const char* fieldEnd);
  const char* SkipEmptyLines(const char* from) const;
  int LineOf(const char* field) const;
  ReadProblem ProblemAt(const char* field, std::string expected) const;

  const char* start_;
  const char* at_;
  const char* end_;
  const char* lastField_ = nullptr;
  const Memory* memory_;
  Progress* progress_;
  std::optional<ReadProblem> problem_;
};

}  // namespace qmx
