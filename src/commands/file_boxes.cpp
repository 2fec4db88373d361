// SPDX-License-Identifier: MIT
#include "commands/file_boxes.h"

namespace qmx {

void ShowFileProblem(Context& context, const std::string& name, const std::string& what,
                     const std::string& problem) {
  context.dialogs.ShowMessage(
      {"The file \"" + name + "\" " + what + "\n\n" + problem, Icon::kCritical});
}

bool WriteFile(Context& context, const std::string& name, FunctionRef<std::string()> compose) {
  FileOutcome outcome;
  context.work.Run([&](Progress&) { outcome = context.files.Replace(name, compose()); });
  if (outcome.Ok()) return true;
  const std::string what =
      outcome.copy.empty()
          ? "could not be written. It is as it was before."
          : "could not be written whole. What was to be written is in \"" + outcome.copy + "\".";
  ShowFileProblem(context, name, what, outcome.problem);
  return false;
}

}  // namespace qmx
