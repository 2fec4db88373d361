// SPDX-License-Identifier: MIT
#include "commands/results_commands.h"

#include "commands/file_boxes.h"
#include "commands/print_commands.h"

namespace qmx {
namespace {

constexpr std::string_view kEnding = ".txt";

}  // namespace

void SaveResults(Context& context, const std::vector<std::string>& lines) {
  if (lines.empty()) return;
  std::string name = context.dialogs.AskSaveFile(kEnding);
  if (name.empty()) return;
  if (!name.ends_with(kEnding)) name += kEnding;
  const auto compose = [&lines](Progress&) {
    std::string text;
    for (const std::string& line : lines) text += line + "\r\n";
    return text;
  };
  if (WriteFile(context, name, compose)) context.view.SetStatus("Saved to " + name);
}

void PrintResults(Context& context, const std::vector<std::string>& lines) {
  PrintLines(context, lines, "Courier New");
}

}  // namespace qmx
