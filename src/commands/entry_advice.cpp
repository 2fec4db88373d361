// SPDX-License-Identifier: MIT
#include "commands/entry_advice.h"

#include <array>

#include "base/number_text.h"

namespace qmx {
namespace {

constexpr std::string_view kBlanks = " \t";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsSign(char c) { return c == '+' || c == '-'; }
bool IsExponentSign(char c) { return c == 'e' || c == 'E'; }

std::string_view WithoutBlanks(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// The bytes of a text's first character in UTF-8.
std::string_view FirstCharacter(std::string_view text) {
  std::size_t length = 1;
  while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U)
    ++length;
  return text.substr(0, length);
}

/// Why a text without a number in front has none; it is not empty.
std::string WhyNoNumber(std::string_view text) {
  const std::string_view unsignedText = text.substr(IsSign(text.front()) ? 1 : 0);
  if (unsignedText.empty() || unsignedText == ".") return "digits are missing";
  if (IsSign(unsignedText.front())) return "a number has one sign in front";
  return "a number begins with digit, sign or point";
}

/// Why a number ends before an E.
std::string WhyNoExponent(std::string_view rest) {
  const std::string_view after = rest.substr(rest.size() > 1 && IsSign(rest[1]) ? 2 : 1);
  if (after.empty()) return "the digits of the exponent are missing";
  return IsSign(after.front()) ? "an exponent has one sign" : "an exponent is a whole number";
}

/// Why a number is not read on; neither part is empty.
std::string WhyNotFurther(std::string_view number, std::string_view rest) {
  const bool hasExponent = number.find_first_of("eE") != std::string_view::npos;
  const char next = rest.front();
  if (next == ',') return "the decimal sign is the point";
  if (next == '.') return hasExponent ? "an exponent is a whole number" : "a number has one point";
  if (IsSign(next)) return "a sign stands in front or after E";
  if (IsExponentSign(next)) return hasExponent ? "a number has one E" : WhyNoExponent(rest);
  if (IsDigit(next)) return "larger numbers cannot be held";
  if (kBlanks.find(next) != std::string_view::npos) return "one number is read";
  return std::string(FirstCharacter(rest)) + " is no part of a number";
}

/// What to do instead of typing a character, or pressing a key.
struct Advice {
  std::string_view keys;  ///< Characters, or the name of one key.
  bool isName;
  std::string_view instead;
};

constexpr auto kAdvice = std::to_array<Advice>({
    {"Backspace", true, "press Delete, or type over it"},
    {"Enter", true, "it is stored already; an arrow leads on"},
    {"Escape", true, "Ctrl+Z takes back what you typed"},
    {",", false, "type . for the decimal sign"},
    {"/", false, "type .3333333333333333 for 1/3"},
    {"*^()=", false, "a cell holds a number, no formula"},
    {"%", false, "type .05 for 5 percent"},
    {"dD", false, "type E before an exponent"},
    {"oO", false, "type 0 for zero"},
    {"lI|", false, "type 1 for one"},
    {"ij", false, "elements are real numbers"},
    {"\u2212\u2013\u2014", false, "type - for minus"},
    {" _'\u00a0", false, "digits stand without a gap"},
});

std::string_view WhatInstead(std::string_view key) {
  for (const Advice& advice : kAdvice) {
    const bool fits =
        advice.isName ? advice.keys == key : advice.keys.find(key) != std::string_view::npos;
    if (fits) return advice.instead;
  }
  return "numbers are typed with 0 to 9 + - . E";
}

std::string ReadAs(const std::string& value, const std::string& why) {
  return "Read as " + value + ": " + why + ".";
}

}  // namespace

std::string ElementLine(Slot slot, int row, int col, double value) {
  std::string prefix(InfoOf(slot).prefix);
  if (prefix.empty()) prefix = "(";
  return prefix + CStr(row) + "," + CStr(col) + ") = " + CStrExact(value);
}

std::string WhyReadInPart(std::string_view text) {
  const std::string_view all = WithoutBlanks(text);
  if (all.empty()) return "there is no number";
  const NumberRead read = ReadNumber(all);
  if (read.end == all.size()) return {};
  if (read.end != 0) return WhyNotFurther(all.substr(0, read.end), all.substr(read.end));
  return all.front() == ',' ? "the decimal sign is the point" : WhyNoNumber(all);
}

std::string FieldNote(FieldKind kind, std::string_view text) {
  if (kind == FieldKind::kDimension) {
    if (ParseDimension(text)) return {};
    return "Not taken: this must be a whole number of at least 1.";
  }
  const std::string why = WhyReadInPart(text);
  const double value = Val(text);
  if (kind == FieldKind::kNumber) return why.empty() ? "" : ReadAs(CStrExact(value), why);
  const int whole = IntegerValue(text);
  if (!why.empty()) return ReadAs(CStr(whole), why);
  return static_cast<double>(whole) == value ? "" : ReadAs(CStr(whole), "a whole number is taken");
}

std::string CountNote(std::string_view text, int least, int most) {
  const auto count = ParseDimension(text, least);
  if (count && *count <= most) return {};
  return "Not taken: this must be a whole number from " + CStr(least) + " to " + CStr(most) + ".";
}

std::string KeyRefusal(std::string_view key) {
  const std::string name(key == " " || key == "\u00a0" ? "Space" : key);
  return name + " is not accepted here: " + std::string(WhatInstead(key));
}

}  // namespace qmx
