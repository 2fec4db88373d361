// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace qmx {

/// A file that is to replace another is written under a name of its own: these around random
/// hexadecimal digits. ASCII alone, so that it is the same in every encoding.
inline constexpr std::string_view kTemporaryStart = ".qmx-";
inline constexpr std::string_view kTemporaryEnd = ".tmp";
inline constexpr std::size_t kRandomBytes = 8;

/// Two small hexadecimal digits for each byte.
inline std::string DigitsOf(const std::array<unsigned char, kRandomBytes>& random) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const unsigned char byte : random) {
    text += kDigits[byte / 16];
    text += kDigits[byte % 16];
  }
  return text;
}

inline std::string TemporaryNameOf(const std::string& digits) {
  return std::string(kTemporaryStart) + digits + std::string(kTemporaryEnd);
}

inline bool IsTemporaryName(std::string_view name) {
  if (!name.starts_with(kTemporaryStart) || !name.ends_with(kTemporaryEnd)) return false;
  name.remove_prefix(kTemporaryStart.size());
  name.remove_suffix(kTemporaryEnd.size());
  return name.size() == 2 * kRandomBytes &&
         name.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

/// The name of the copy that is kept while a file is written in place: recognisable, and no longer
/// than names may be. `name` is the file's own, in UTF-8, without its folder.
inline std::string CopyNameOf(const std::string& digits, std::string name) {
  constexpr std::size_t kMost = 200;
  if (name.size() > kMost) name.erase(0, name.size() - kMost);
  // Not from within a character.
  while (!name.empty() && (name.front() & 0xC0) == 0x80) name.erase(0, 1);
  return digits + "-" + name;
}

}  // namespace qmx
