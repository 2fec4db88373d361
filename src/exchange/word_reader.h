// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace qmx {

/// Reads a text of lines and of words between blanks, for formats whose numbers are free to stand
/// on any line. Lines end with LF or CR LF. A refusal names the line and the word in it.
class WordReader {
 public:
  explicit WordReader(std::string_view bytes);

  /// The rest of the present line, or the next line where nothing of it has been read; false at the
  /// end.
  bool NextLine(std::string_view& line);
  /// What NextLine would give; empty at the end.
  std::string_view PeekLine() const;
  /// The next word of this or a later line; empty at the end.
  std::string_view NextWord();
  /// True where nothing but blanks and line ends is left.
  bool AtEnd();

  /// The next word as a finite number. Refuses anything else.
  double NextNumber(const char* expected);
  /// The next word as an integer that a double holds exactly. Refuses anything else.
  double NextInteger(const char* expected);
  /// The next word as a count. Refuses anything but digits.
  std::uint64_t NextCount(const char* expected);

  /// Where the reader stands, and how to make it stand there again.
  std::size_t Offset() const { return static_cast<std::size_t>(at_ - start_); }
  void Seek(std::size_t offset) { at_ = start_ + offset; }
  std::size_t BytesLeft() const { return static_cast<std::size_t>(end_ - at_); }
  /// Refuses the word or line that was read last, or the end of the text behind it.
  [[noreturn]] void RefuseLast(const std::string& expected) const;
  /// Says at the word that was read last what is wrong, in words of one's own.
  [[noreturn]] void ComplainOfLast(const std::string& text) const;
  /// Refuses a text whose last line has no end: what stands there may be half of a number.
  void CheckLastLineEnds() const;

 private:
  [[noreturn]] void Complain(const char* place, const std::string& text) const;

  const char* start_;
  const char* end_;
  const char* at_;
  const char* last_;  ///< Where the word or line read last starts.
  std::size_t lastSize_ = 0;
  bool lastIsLine_ = false;
};

/// Reads an integer and tells whether a double holds it exactly.
///   "9007199254740992" -> exact   "9007199254740993" -> inexact   "1.5", "", "x" -> no integer
enum class IntegerKind { kNone, kExact, kInexact };
IntegerKind ReadInteger(std::string_view word, double& value);

/// The words for an integer that is refused because a double cannot hold it.
std::string InexactInteger(const std::string& digits);

/// True for two words that differ in nothing but case.
bool EqualsIgnoringCase(std::string_view one, std::string_view two);

/// True for the words that programs write for what is no finite number: "NaN", "-Inf", "NA".
bool IsNonFiniteWord(std::string_view word);

}  // namespace qmx
