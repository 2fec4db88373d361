// SPDX-License-Identifier: MIT
#include <vector>

#include "desktop/association_text.h"

namespace qmx {

namespace {

std::vector<std::string> LinesOf(std::string_view text) {
  std::vector<std::string> lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    lines.emplace_back(text.substr(0, end));
    text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
  }
  return lines;
}

std::string TextOf(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

/// True for a line "key=..." of a key file; blanks around the key do not count.
bool IsEntry(std::string_view line, std::string_view key) {
  const std::size_t start = line.find_first_not_of(" \t");
  if (start == std::string_view::npos || !line.substr(start).starts_with(key)) return false;
  const std::size_t equals = line.find_first_not_of(" \t", start + key.size());
  return equals != std::string_view::npos && line[equals] == '=';
}

}  // namespace

std::string ExecArgument(std::string_view path) {
  std::string argument = "\"";
  for (const char c : path) {
    switch (c) {
      case '"':
      case '`':
      case '$':
        // A backslash for the quotes, written as two because the line is a string of a key file.
        argument += std::string("\\\\") + c;
        break;
      case '\\':
        argument += "\\\\\\\\";
        break;
      case '%':
        argument += "%%";
        break;
      case '\n':
        argument += "\\n";
        break;
      case '\t':
        argument += "\\t";
        break;
      case '\r':
        argument += "\\r";
        break;
      default:
        argument += c;
    }
  }
  return argument + "\"";
}

std::string ExecCommand(std::string_view program) {
  if (program.find('%') == std::string_view::npos) return ExecArgument(program);
  // Desktops look for the program before they undo the doubling of its "%": they find the shell,
  // and the path is one of its arguments.
  return "sh -c " + ExecArgument(R"(exec "$0" "$@")") + " " + ExecArgument(program);
}

std::string WithProgram(std::string_view entry, std::string_view program) {
  std::vector<std::string> lines = LinesOf(entry);
  for (std::string& line : lines) {
    if (IsEntry(line, "Exec")) line = "Exec=" + ExecCommand(program) + " %f";
  }
  return TextOf(lines);
}

std::string WithDefaultApplication(std::string_view list, std::string_view type,
                                   std::string_view entry) {
  constexpr std::string_view kGroup = "[Default Applications]";
  const std::string wanted = std::string(type) + "=" + std::string(entry);
  std::vector<std::string> lines = LinesOf(list);
  auto line = lines.begin();
  while (line != lines.end() && !line->starts_with(kGroup)) ++line;
  if (line == lines.end()) {
    if (!lines.empty() && !lines.back().empty()) lines.emplace_back();
    lines.emplace_back(kGroup);
    lines.push_back(wanted);
    return TextOf(lines);
  }
  const auto first = ++line;
  for (; line != lines.end() && !line->starts_with("["); ++line) {
    if (!IsEntry(*line, type)) continue;
    *line = wanted;
    return TextOf(lines);
  }
  lines.insert(first, wanted);
  return TextOf(lines);
}

}  // namespace qmx
