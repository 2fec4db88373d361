// SPDX-License-Identifier: MIT
#include <windows.h>

#include "desktop/command_line.h"
#include "desktop/program_path.h"
#include "desktop/wide_text.h"

namespace qmx {
namespace {

bool SameName(std::wstring_view one, std::wstring_view other) {
  return CompareStringOrdinal(one.data(), static_cast<int>(one.size()), other.data(),
                              static_cast<int>(other.size()), TRUE) == CSTR_EQUAL;
}

std::size_t LengthOfProgram(std::wstring_view line, std::wstring_view program) {
  if (line.starts_with(L'"')) return line.find(L'"', 1) + 1;
  // The shell may leave a path with blanks as an association has it: without quotes.
  if (SameName(line.substr(0, program.size()), program)) return program.size();
  return line.find_first_of(L" \t");
}

}  // namespace

std::wstring_view BehindProgram(std::wstring_view line, std::wstring_view program) {
  constexpr std::wstring_view kBlanks = L" \t";
  const std::size_t length = LengthOfProgram(line, program);
  line.remove_prefix(length == 0 || length > line.size() ? line.size() : length);
  const std::size_t first = line.find_first_not_of(kBlanks);
  if (first == std::wstring_view::npos) return {};
  return line.substr(first, line.find_last_not_of(kBlanks) + 1 - first);
}

std::string CommandLine(int /*argc*/, char** /*argv*/) {
  return Narrow(BehindProgram(GetCommandLineW(), WindowsProgramPath()));
}

}  // namespace qmx
