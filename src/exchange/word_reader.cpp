// SPDX-License-Identifier: MIT
#include "exchange/word_reader.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "base/number_text.h"
#include "base/words.h"
#include "exchange/refusal.h"

namespace qmx {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }
bool IsBlankOrEnd(char c) { return IsBlank(c) || c == '\n'; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }
char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

bool EqualsIgnoringCase(std::string_view one, std::string_view two) {
  return std::equal(one.begin(), one.end(), two.begin(), two.end(),
                    [](char a, char b) { return Lower(a) == Lower(b); });
}

bool IsNonFiniteWord(std::string_view word) {
  if (word.starts_with('-') || word.starts_with('+')) word.remove_prefix(1);
  for (const char* name : {"nan", "na", "inf", "infinity", "#n/a"}) {
    if (EqualsIgnoringCase(word, name)) return true;
  }
  return false;
}

IntegerKind ReadInteger(std::string_view word, double& value) {
  std::string_view digits = word;
  const bool negative = digits.starts_with('-');
  if (negative || digits.starts_with('+')) digits.remove_prefix(1);
  if (digits.empty() || !std::all_of(digits.begin(), digits.end(), IsDigit))
    return IntegerKind::kNone;
  std::uint64_t magnitude = 0;
  const char* end = digits.data() + digits.size();
  if (std::from_chars(digits.data(), end, magnitude).ec != std::errc())
    return IntegerKind::kInexact;
  // Beyond 64 bits only 2^64 itself could come of rounding, which is no integer that was read.
  const double rounded = static_cast<double>(magnitude);
  if (rounded >= 0x1p64 || static_cast<std::uint64_t>(rounded) != magnitude)
    return IntegerKind::kInexact;
  value = negative ? -rounded : rounded;
  return IntegerKind::kExact;
}

std::string InexactInteger(const std::string& digits) {
  return "the integer " + digits + " has more digits than a number of the program can hold.";
}

WordReader::WordReader(std::string_view bytes)
    : start_(bytes.data()), end_(start_ + bytes.size()), at_(start_), last_(start_) {}

bool WordReader::NextLine(std::string_view& line) {
  last_ = at_;
  lastIsLine_ = true;
  line = PeekLine();
  lastSize_ = line.size();
  if (at_ == end_) return false;
  at_ = std::find(at_, end_, '\n');
  if (at_ != end_) ++at_;
  return true;
}

std::string_view WordReader::PeekLine() const {
  const char* lineEnd = std::find(at_, end_, '\n');
  std::string_view line(at_, static_cast<std::size_t>(lineEnd - at_));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

std::string_view WordReader::NextWord() {
  while (at_ != end_ && IsBlankOrEnd(*at_)) ++at_;
  last_ = at_;
  lastIsLine_ = false;
  while (at_ != end_ && !IsBlankOrEnd(*at_)) ++at_;
  lastSize_ = static_cast<std::size_t>(at_ - last_);
  return {last_, lastSize_};
}

bool WordReader::AtEnd() {
  while (at_ != end_ && IsBlankOrEnd(*at_)) ++at_;
  return at_ == end_;
}

double WordReader::NextNumber(const char* expected) {
  while (at_ != end_ && IsBlankOrEnd(*at_)) ++at_;
  double value = 0;
  const char* numberEnd = ParseLeadingNumber(at_, end_, value);
  if (numberEnd != nullptr && (numberEnd == end_ || IsBlankOrEnd(*numberEnd))) {
    last_ = at_;
    lastIsLine_ = false;
    lastSize_ = static_cast<std::size_t>(numberEnd - at_);
    at_ = numberEnd;
    return value;
  }
  const std::string_view word = NextWord();
  // Some programs write the exponent as their language has it.
  std::string plain(word);
  std::replace_if(
      plain.begin(), plain.end(), [](char c) { return c == 'd' || c == 'D'; }, 'e');
  if (const auto number = ParseNumber(plain)) return *number;
  if (IsNonFiniteWord(word)) RefuseLast("a finite number");
  RefuseLast(expected);
}

double WordReader::NextInteger(const char* expected) {
  double value = 0;
  const std::string_view word = NextWord();
  switch (ReadInteger(word, value)) {
    case IntegerKind::kExact:
      return value;
    case IntegerKind::kInexact:
      ComplainOfLast(InexactInteger(Quoted(word)));
    default:
      RefuseLast(expected);
  }
}

std::uint64_t WordReader::NextCount(const char* expected) {
  const std::string_view word = NextWord();
  std::uint64_t count = 0;
  const char* end = word.data() + word.size();
  const auto parsed = std::from_chars(word.data(), end, count);
  if (word.empty() || parsed.ec != std::errc() || parsed.ptr != end) RefuseLast(expected);
  return count;
}

void WordReader::RefuseLast(const std::string& expected) const {
  std::string found = "an empty line";
  if (lastSize_ > 0) {
    found = Quoted({last_, lastSize_});
  } else if (last_ == end_) {
    found = "the end of the file";
  }
  Complain(last_, "expected " + expected + ", but found " + found + ".");
}

void WordReader::ComplainOfLast(const std::string& text) const { Complain(last_, text); }

void WordReader::Complain(const char* place, const std::string& text) const {
  const int line = static_cast<int>(std::count(start_, place, '\n')) + 1;
  int word = 0;
  if (!lastIsLine_) {
    word = 1;
    for (const char* c = place; c != start_ && c[-1] != '\n'; --c) {
      const bool endsWord = !IsBlank(c[-1]) && (c == place || IsBlank(*c));
      word += endsWord ? 1 : 0;
    }
  }
  RefuseAt(line, word, text);
}

void WordReader::CheckLastLineEnds() const {
  if (end_ == start_ || end_[-1] == '\n') return;
  const int line = static_cast<int>(std::count(start_, end_, '\n')) + 1;
  RefuseAt(line, 0, "the line has no end; the file seems to be cut off.");
}

}  // namespace qmx
