// SPDX-License-Identifier: MIT
#include "base/words.h"

namespace qmx {
namespace {

constexpr std::size_t kMostShown = 40;

bool IsMiddleOfCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U; }

}  // namespace

std::string CountOf(std::size_t count, std::string_view one) {
  return std::to_string(count) + " " + std::string(one) + (count == 1 ? "" : "s");
}

std::string Quoted(std::string_view text) {
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

}  // namespace qmx
