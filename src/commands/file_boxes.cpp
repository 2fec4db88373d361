// SPDX-License-Identifier: MIT
#include "commands/file_boxes.h"

namespace qmx {

void ShowFileProblem(Context& context, const std::string& name, const std::string& what,
                     const std::string& problem) {
  context.dialogs.ShowMessage(
      {"The file \"" + name + "\" " + what + "\n\n" + problem, Icon::kCritical});
}

std::string BaseName(const std::string& path) {
  const std::size_t end = path.find_last_of("/\\");
  return end == std::string::npos ? path : path.substr(end + 1);
}

std::string WritingOf(const std::string& name) { return "Writing " + BaseName(name); }

bool WriteFile(Context& context, const std::string& name,
               FunctionRef<std::string(Progress&)> compose) {
  FileOutcome outcome;
  const auto write = [&](Progress& progress) {
    Stage making(progress, 0, kNumbersPart);
    const std::string bytes = compose(making);
    Stage storing(progress, kNumbersPart, 1);
    outcome = context.files.Replace(name, bytes, storing);
  };
  context.work.Run(write, WritingOf(name));
  if (outcome.Ok()) return true;
  const std::string what =
      outcome.copy.empty()
          ? "could not be written. It is as it was before."
          : "could not be written whole. What was to be written is in \"" + outcome.copy + "\".";
  ShowFileProblem(context, name, what, outcome.problem);
  return false;
}

}  // namespace qmx
