// SPDX-License-Identifier: MIT
#include "commands/export_commands.h"

#include <string>
#include <utility>

#include "commands/file_boxes.h"

namespace qmx {

void ExportSlot(Context& context, ForeignDialogs& dialogs, Slot slot) {
  const Matrix& values = context.workspace.At(slot).array;
  ForeignChoice choice;
  choice.name = VariableName(InfoOf(slot).IsEditor() && slot <= kSlotB ? InfoOf(slot).name
                                                                       : InfoOf(slot).caption);
  if (!dialogs.AskExport(slot, choice)) return;
  const std::string ending(InfoOf(choice.format).ending);
  std::string name = context.dialogs.AskSaveFile(ending);
  if (name.empty()) return;
  if (!name.ends_with(ending)) name += ending;
  // A number takes up to 25 bytes, and the whole text may be kept twice.
  if (values.Size() > context.memory.Available() / 50) {
    context.dialogs.ShowMessage(
        {"There is not enough memory to write so many numbers.", Icon::kCritical});
    return;
  }
  ForeignOutcome<std::string> written;
  const auto compose = [&](Progress& progress) {
    progress.Report(0);
    written = WriteForeign(values, choice);
  };
  context.work.Run(compose, WritingOf(name));
  if (!written.Ok()) {
    context.dialogs.ShowMessage(
        {"The matrix cannot be exported. " + written.problem, Icon::kCritical});
    return;
  }
  if (WriteFile(context, name, [&](Progress&) { return std::move(written.content); }))
    context.view.SetStatus("Exported to " + name);
}

}  // namespace qmx
