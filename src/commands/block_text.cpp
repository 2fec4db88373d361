// SPDX-License-Identifier: MIT
#include "commands/block_text.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "base/number_text.h"
#include "base/words.h"

namespace qmx {
namespace {

constexpr std::string_view kMinusSign = "\xE2\x88\x92";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
/// The blank, and those of other widths that tables and typesetters put around numbers.
constexpr std::array<std::string_view, 5> kBlanks = {" ", "\xC2\xA0", "\xE2\x80\xAF",
                                                     "\xE2\x80\x87", "\xE2\x80\x89"};

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLineEnd(char c) { return c == '\n' || c == '\r'; }

std::string_view WithoutBlanks(std::string_view text) {
  for (bool found = true; found;) {
    found = false;
    for (const std::string_view blank : kBlanks) {
      if (text.starts_with(blank)) text.remove_prefix(blank.size()), found = true;
      if (text.ends_with(blank)) text.remove_suffix(blank.size()), found = true;
    }
  }
  return text;
}

std::string_view WithoutQuotes(std::string_view text) {
  const bool quoted = text.size() >= 2 && text.front() == '"' && text.back() == '"';
  return quoted ? WithoutBlanks(text.substr(1, text.size() - 2)) : text;
}

std::string_view WithoutTrailingLines(std::string_view text) {
  while (!text.empty() && (IsLineEnd(text.back()) || text.back() == ' ')) text.remove_suffix(1);
  return text;
}

/// Puts a plain sign in the place of the minus sign of Unicode. `room` keeps the text where it had
/// one.
std::string_view WithPlainSigns(std::string_view text, std::string& room) {
  if (text.find(kMinusSign[0]) == std::string_view::npos) return text;
  room = text;
  for (std::size_t at = room.find(kMinusSign); at != std::string::npos; at = room.find(kMinusSign))
    room.replace(at, kMinusSign.size(), "-");
  return room;
}

std::size_t CountDigits(std::string_view text) {
  return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), IsDigit) -
                                  text.begin());
}

/// What stands before the exponent, without a sign.
std::string_view Mantissa(std::string_view text) {
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) text.remove_prefix(1);
  return text.substr(0, text.find_first_of("eE"));
}

/// True for 1,5 and 1.234,5: digits stand behind the only comma, digits and points before it.
bool MayBeDecimalComma(std::string_view chunk) {
  const std::string_view number = Mantissa(chunk);
  const std::size_t comma = number.find(',');
  if (comma == std::string_view::npos) return false;
  const std::string_view after = number.substr(comma + 1);
  return number.find_first_not_of("0123456789.") == comma && !after.empty() &&
         CountDigits(after) == after.size();
}

/// True for 1,234 and 1,234,567.8: three digits stand behind every comma.
bool MayBeThousands(std::string_view chunk) {
  std::string_view number = Mantissa(chunk);
  number = number.substr(0, number.find('.'));
  const std::size_t first = CountDigits(number);
  if (first < 1 || first > 3 || first == number.size()) return false;
  for (number.remove_prefix(first); !number.empty(); number.remove_prefix(4)) {
    if (number.front() != ',' || CountDigits(number.substr(1, 3)) != 3) return false;
  }
  return true;
}

/// True if a comma in the text may belong to a number.
bool HasCommaInNumber(std::string_view text) {
  constexpr std::string_view kBetweenChunks = " \r\n";
  for (std::size_t comma = text.find(','); comma != std::string_view::npos;) {
    const std::size_t before = text.find_last_of(kBetweenChunks, comma);
    const std::size_t start = before == std::string_view::npos ? 0 : before + 1;
    const std::size_t end = std::min(text.find_first_of(kBetweenChunks, comma), text.size());
    const std::string_view chunk = text.substr(start, end - start);
    if (MayBeDecimalComma(chunk) || MayBeThousands(chunk)) return true;
    comma = text.find(',', end);
  }
  return false;
}

char SeparatorOf(std::string_view text) {
  if (text.find('\t') != std::string_view::npos) return '\t';
  if (text.find(';') != std::string_view::npos) return ';';
  const bool hasComma = text.find(',') != std::string_view::npos;
  return hasComma && !HasCommaInNumber(text) ? ',' : ' ';
}

/// True for a text that has the form of a number, however large.
bool HasFormOfNumber(std::string_view text) {
  const std::size_t exponent = std::min(text.find_first_of("eE"), text.size());
  const std::string mantissa(text.substr(0, exponent));
  return ParseNumber(mantissa + "E-999999999").has_value() &&
         ParseNumber("0" + std::string(text.substr(exponent))).has_value();
}

/// Goes through the cells of a text once.
class BlockReader {
 public:
  BlockReader(std::string_view text, char separator, char decimalSign = '.')
      : text_(text), separator_(separator), decimalSign_(decimalSign) {}

  NumberBlock Read() {
    while (ReadRow() && at_ < text_.size()) SkipLineEnd();
    block_.texts.rows = static_cast<int>(row_);
    block_.texts.cols = static_cast<int>(cols_);
    return std::move(block_);
  }

 private:
  bool ReadRow();
  bool ReadCell();
  bool TakeNumber(std::string_view cell);
  std::string_view NextCell();
  std::size_t EndOfQuotes(std::size_t start) const;
  void SkipLineEnd() { at_ += text_.substr(at_).starts_with("\r\n") ? 2 : 1; }
  void SkipBlanks() {
    while (at_ < text_.size() && text_[at_] == ' ') ++at_;
  }
  bool AtRowEnd() const { return at_ == text_.size() || IsLineEnd(text_[at_]); }
  bool Refuse(std::string problem) {
    block_.problem = std::move(problem);
    return false;
  }

  std::string_view text_;
  char separator_;
  char decimalSign_;
  std::string comma_;  ///< A cell with its comma, as a point.
  std::size_t at_ = 0;
  std::size_t row_ = 0;  ///< Of the cell that is being read, from 1.
  std::size_t col_ = 0;
  std::size_t cols_ = 0;  ///< Of the first row.
  std::string signs_;
  NumberBlock block_;
};

bool BlockReader::ReadRow() {
  ++row_;
  col_ = 0;
  while (ReadCell()) {
    if (AtRowEnd()) {
      if (row_ == 1) cols_ = col_;
      if (col_ == cols_) return true;
      return Refuse("its row " + std::to_string(row_) + " has " + CountOf(col_, "column") +
                    ", but the first row has " + std::to_string(cols_) + ".");
    }
    if (separator_ != ' ') ++at_;
  }
  return false;
}

/// The end of a quoted cell that starts at `start`, behind the blanks that follow it; npos where no
/// separator or line end follows.
std::size_t BlockReader::EndOfQuotes(std::size_t start) const {
  const std::size_t close = text_.find('"', start + 1);
  if (close == std::string_view::npos) return close;
  const std::size_t end = std::min(text_.find_first_not_of(' ', close + 1), text_.size());
  const bool ends = end == text_.size() || IsLineEnd(text_[end]) || text_[end] == separator_ ||
                    (separator_ == ' ' && end > close + 1);
  return ends ? end : std::string_view::npos;
}

std::string_view BlockReader::NextCell() {
  SkipBlanks();
  const std::size_t start = at_;
  std::size_t end = std::string_view::npos;
  if (at_ < text_.size() && text_[at_] == '"') end = EndOfQuotes(at_);
  if (end == std::string_view::npos) {
    end = at_;
    while (end < text_.size() && text_[end] != separator_ && !IsLineEnd(text_[end])) ++end;
  }
  at_ = end;
  if (separator_ == ' ') SkipBlanks();
  return WithoutBlanks(text_.substr(start, end - start));
}

bool BlockReader::ReadCell() {
  ++col_;
  return TakeNumber(WithPlainSigns(WithoutQuotes(NextCell()), signs_));
}

bool BlockReader::TakeNumber(std::string_view cell) {
  if (decimalSign_ == ',' && cell.find(',') != std::string_view::npos) {
    comma_ = cell;
    comma_[comma_.find(',')] = '.';
    cell = comma_;
  }
  if (const auto value = ParseNumber(cell)) {
    block_.values.push_back(*value);
    block_.texts.Append(cell);
    return true;
  }
  const std::string place =
      "row " + std::to_string(row_) + ", column " + std::to_string(col_) + " of it is ";
  if (cell.empty()) return Refuse(place + "empty. Write 0 where you mean zero.");
  const bool hasComma = cell.find(',') != std::string_view::npos;
  if (hasComma && cell.find_first_not_of("0123456789+-.,eE") == std::string_view::npos) {
    return Refuse(place + Quoted(cell) +
                  ". A decimal point is needed, not a comma; tabs or semicolons separate numbers.");
  }
  if (HasFormOfNumber(cell)) return Refuse(place + Quoted(cell) + ", which is too large.");
  return Refuse(place + Quoted(cell) + ", which is no number.");
}

/// True if the commas of a text whose numbers are separated by something else can only be decimal
/// signs: there is no point, one of them does not stand before three digits as between thousands,
/// and they do not separate numbers either.
bool HasDecimalCommas(std::string_view text, char separator) {
  constexpr std::string_view kBetween = " \t;\r\n\"";
  if (text.find('.') != std::string_view::npos) return false;
  bool found = false;
  for (std::size_t comma = text.find(','); comma != std::string_view::npos;) {
    const std::size_t before = text.find_last_of(kBetween, comma);
    const std::size_t start = before == std::string_view::npos ? 0 : before + 1;
    const std::size_t end = std::min(text.find_first_of(kBetween, comma), text.size());
    const std::string_view chunk = text.substr(start, end - start);
    const std::string_view number = Mantissa(chunk);
    if (!MayBeDecimalComma(chunk) || number.front() == ',') return false;
    found = found || !MayBeThousands(chunk) || number.starts_with("0,");
    comma = text.find(',', end);
  }
  return found && (separator != ' ' || !BlockReader(text, ',').Read().problem.empty());
}

}  // namespace

NumberBlock ReadNumberBlock(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  text = WithoutTrailingLines(text);
  const char separator = SeparatorOf(text);
  NumberBlock block = BlockReader(text, separator).Read();
  if (block.problem.empty() || !HasDecimalCommas(text, separator)) return block;
  NumberBlock withCommas = BlockReader(text, separator, ',').Read();
  return withCommas.problem.empty() ? withCommas : block;
}

std::string PlainCellText(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
  std::string room;
  return std::string(
      WithPlainSigns(WithoutQuotes(WithoutBlanks(WithoutTrailingLines(text))), room));
}

}  // namespace qmx
