// SPDX-License-Identifier: MIT
#include "commands/document_status.h"

#include "commands/file_boxes.h"
#include "commands/file_commands.h"
#include "workspace/result_table.h"

namespace qmx {
namespace {

bool HoldsNothing(const Workspace& workspace) { return FlagsOf(workspace) == ResultFlags{}; }

}  // namespace

DocumentStatus StatusOf(const Workspace& workspace, bool changed) {
  const std::string& current = workspace.currentFileName;
  if (current.empty()) {
    if (HoldsNothing(workspace) && !changed) {
      return {
          "To begin, type the rows and columns of matrix A and press Create, or open a project.",
          {}};
    }
    return {"Not saved yet", "Save asks for the name of the project's file."};
  }
  const std::string saved = NameToBeSaved(workspace);
  if (saved != current) {
    return {"Save will write " + BaseName(saved),
            "The file used last is " + current + ". Save writes the project to " + saved + "."};
  }
  return {BaseName(current) + (changed ? ", changed since it was saved" : ", saved"), current};
}

}  // namespace qmx
