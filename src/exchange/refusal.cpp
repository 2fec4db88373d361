// SPDX-License-Identifier: MIT
#include "exchange/refusal.h"

namespace qmx {
namespace {

constexpr std::size_t kMostShown = 40;

bool IsMiddleOfCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

}  // namespace

void RefuseAt(int line, int column, const std::string& text) {
  std::string place = "Line " + std::to_string(line);
  if (column > 0) place += ", column " + std::to_string(column);
  throw Refusal(place + ": " + text, line, column);
}

void RefuseElement(std::size_t row, std::size_t column, const std::string& text) {
  const std::string place = "Row " + std::to_string(row) + ", column " + std::to_string(column);
  throw Refusal(place + ": " + text, static_cast<int>(row), static_cast<int>(column));
}

std::string Shown(std::string_view text) {
  std::string shown(text.substr(0, kMostShown));
  if (text.size() > kMostShown) {
    std::size_t end = kMostShown;
    while (end > 0 && IsMiddleOfCharacter(text[end])) --end;
    shown = shown.substr(0, end) + "...";
  }
  for (char& c : shown) {
    if (static_cast<unsigned char>(c) < ' ' || c == '\x7F') c = ' ';
  }
  return '"' + shown + '"';
}

std::string CountOf(std::size_t count, const char* what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace qmx
