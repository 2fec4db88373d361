// SPDX-License-Identifier: MIT
#include "exchange/table_scanner.h"

#include <algorithm>
#include <array>
#include <cassert>

#include "base/number_text.h"

namespace qmx {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view kMinusSign = "\xE2\x88\x92";
/// Blanks that cannot break, which some programs put around numbers.
constexpr std::array<std::string_view, 2> kOtherBlanks = {"\xC2\xA0", "\xE2\x80\xAF"};
/// What is longer is no text in quotes but a quote that was never closed.
constexpr std::ptrdiff_t kLongestQuotes = 1 << 16;

/// True for what numbers with a decimal comma are made of.
bool IsOfNumbers(char c) {
  return (c >= '0' && c <= '9') || c == ',' || c == '-' || c == '+' || c == 'e' || c == 'E';
}

std::string_view WithoutOtherBlanks(std::string_view text) {
  for (const std::string_view blank : kOtherBlanks) {
    while (text.starts_with(blank)) text.remove_prefix(blank.size());
    while (text.ends_with(blank)) text.remove_suffix(blank.size());
  }
  return text;
}

/// A number of another spelling as ParseNumber knows it.
std::string PlainSpelling(std::string_view cell, char decimalSign) {
  std::string plain(WithoutOtherBlanks(cell));
  if (plain.starts_with(kMinusSign)) plain.replace(0, kMinusSign.size(), "-");
  for (std::size_t at = plain.find(kMinusSign); at != std::string::npos;
       at = plain.find(kMinusSign, at))
    plain.replace(at, kMinusSign.size(), "-");
  for (char& c : plain) {
    if (c == 'd' || c == 'D') c = 'e';
    // A point among decimal commas is no decimal sign.
    if (decimalSign == ',' && (c == ',' || c == '.')) c = c == ',' ? '.' : '?';
  }
  return plain;
}

}  // namespace

TableScanner::TableScanner(std::string_view bytes, const TableSettings& settings)
    : separator_(settings.separator),
      decimalSign_(settings.decimalSign),
      commentSign_(settings.commentSign) {
  start_ = bytes.data();
  end_ = start_ + bytes.size();
  row_ = at_ = start_ + (bytes.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0);
  lineEnd_ = bytes.find('\n') != std::string_view::npos ? '\n' : '\r';
  hasQuotes_ = bytes.find('"') != std::string_view::npos;
}

const char* TableScanner::AfterQuotes(const char* at) const {
  const char* limit = end_ - at > kLongestQuotes ? at + kLongestQuotes : end_;
  for (const char* close = std::find(at + 1, limit, '"'); close != limit;
       close = std::find(close + 2, limit, '"')) {
    if (limit - close > 1 && close[1] == '"') continue;
    const char* next = SkipBlanks(close + 1);
    const bool ends =
        AtRowEnd(next) || *next == separator_ || (separator_ == ' ' && next != close + 1);
    return ends ? close + 1 : nullptr;
  }
  return nullptr;
}

/// The end of the cell that starts at `at`, where no blanks stand.
const char* TableScanner::AfterCell(const char* at) const {
  if (hasQuotes_ && at != end_ && *at == '"') {
    if (const char* after = AfterQuotes(at)) return after;
  }
  while (!AtRowEnd(at) && *at != separator_ && !(separator_ == ' ' && IsBlank(*at))) ++at;
  return at;
}

const char* TableScanner::EndOfRow(const char* at) const {
  if (!hasQuotes_) return std::find(at, end_, lineEnd_);
  for (at = SkipBlanks(at); !AtRowEnd(at);) {
    at = SkipBlanks(AfterCell(at));
    if (!AtRowEnd(at) && *at == separator_) at = SkipBlanks(at + 1);
  }
  return at;
}

bool TableScanner::NextRow() {
  const char* at = begun_ ? EndOfRow(at_) : at_;
  for (bool step = begun_; true; step = true) {
    if (step && at != end_) ++at;
    if (at == end_) break;
    row_ = at;
    begun_ = true;
    at = SkipBlanks(at);
    if (AtRowEnd(at)) continue;
    if (commentSign_ == 0 || *at != commentSign_) {
      at_ = at;
      moreCells_ = true;
      column_ = 0;
      return true;
    }
    at = std::find(at, end_, lineEnd_);
  }
  at_ = end_;
  moreCells_ = false;
  return false;
}

/// Goes on behind a cell that ends here; false where it does not.
bool TableScanner::StepOver(const char* cellEnd) {
  const char* next = SkipBlanks(cellEnd);
  const bool rowEnds = AtRowEnd(next);
  if (!rowEnds) {
    if (separator_ == ' ') {
      if (next == cellEnd) return false;
    } else if (*next == separator_) {
      ++next;
    } else {
      return false;
    }
  }
  moreCells_ = !rowEnds;
  at_ = next;
  ++column_;
  return true;
}

bool TableScanner::NextCell(TableCell& cell) {
  if (!moreCells_) return false;
  const char* first = SkipBlanks(at_);
  const char* last = AfterCell(first);
  cell.quoted = last - first >= 2 && *first == '"' && last[-1] == '"';
  [[maybe_unused]] const bool ends = StepOver(last);
  assert(ends);
  while (last != first && IsBlank(last[-1])) --last;
  if (cell.quoted) {
    first = SkipBlanks(first + 1);
    --last;
    while (last > first && IsBlank(last[-1])) --last;
  }
  cell.text = {first, static_cast<std::size_t>(std::max<std::ptrdiff_t>(last - first, 0))};
  return true;
}

/// As ParseLeadingNumber, with a decimal comma where that is chosen.
const char* TableScanner::ReadPlainNumber(const char* at, double& value) const {
  if (decimalSign_ == '.') return ParseLeadingNumber(at, end_, value);
  std::array<char, 48> room;
  std::size_t length = 0;
  for (const char* c = at; c != end_ && IsOfNumbers(*c); ++c) {
    if (length == room.size()) return nullptr;
    room[length++] = *c == ',' ? '.' : *c;
  }
  const char* end = ParseLeadingNumber(room.data(), room.data() + length, value);
  return end == room.data() + length ? at + length : nullptr;
}

bool TableScanner::NextNumber(double& value) {
  if (!moreCells_) return false;
  const char* end = ReadPlainNumber(SkipBlanks(at_), value);
  return end != nullptr && StepOver(end);
}

int TableScanner::Line() const { return static_cast<int>(std::count(start_, row_, lineEnd_)) + 1; }

bool ReadCellNumber(std::string_view cell, char decimalSign, double& value) {
  const auto number = ParseNumber(PlainSpelling(cell, decimalSign));
  if (number) value = *number;
  return number.has_value();
}

}  // namespace qmx
