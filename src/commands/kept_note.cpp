// SPDX-License-Identifier: MIT
#include "commands/kept_note.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "base/number_text.h"

namespace qmx {
namespace {

/// A double has no more digits than these that differ from zero.
constexpr std::size_t kMostDigits = 800;

/// The digits of a decimal number from the first that is not 0 on, without its point.
std::string SignificantDigits(std::string_view number) {
  std::string digits;
  for (const char character : number) {
    if (character == 'e' || character == 'E') break;
    const bool isDigit = character >= '0' && character <= '9';
    if (isDigit && (character != '0' || !digits.empty())) digits += character;
  }
  return digits;
}

/// The first digits of a double's exact decimal value, rounded to so many.
std::string FirstDigits(double value, std::size_t count) {
  std::array<char, kMostDigits + 16> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value,
                                 std::chars_format::scientific, static_cast<int>(count) - 1);
  return SignificantDigits({text.data(), static_cast<std::size_t>(end.ptr - text.data())});
}

}  // namespace

std::string KeptNote(std::string_view typed) {
  double value = 0;
  typed.remove_prefix(std::min(typed.find_first_not_of(' '), typed.size()));
  const char* end = ParseLeadingNumber(typed.data(), typed.data() + typed.size(), value);
  if (end == nullptr) return {};
  std::string digits =
      SignificantDigits({typed.data(), static_cast<std::size_t>(end - typed.data())});
  const std::size_t compared = std::min(digits.size(), kMostDigits);
  const bool restIsZero = digits.find_first_not_of('0', compared) == std::string::npos;
  digits.resize(compared);
  if (digits.empty()) return {};
  if (value != 0 && restIsZero && FirstDigits(value, compared) == digits) return {};
  return "no more than 15 to 17 digits can be held";
}

}  // namespace qmx
