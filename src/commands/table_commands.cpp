// SPDX-License-Identifier: MIT
#include "commands/table_commands.h"

#include <algorithm>

#include "workspace/result_table.h"

namespace qmx {

bool HasMatrix(const Workspace& workspace, Slot slot) {
  return workspace.*ResultOf(slot).flag && workspace.At(slot).array.Size() > 0;
}

void PrintTable(Context& context, PrintPreview& preview, std::optional<Slot> wanted) {
  std::vector<Slot> slots;
  for (const Slot slot : kAllSlots) {
    if (HasMatrix(context.workspace, slot)) slots.push_back(slot);
  }
  if (slots.empty()) {
    context.dialogs.ShowMessage({"There is no matrix to print.", Icon::kCritical});
    return;
  }
  const bool isThere = wanted && std::find(slots.begin(), slots.end(), *wanted) != slots.end();
  if (preview.Show(context.workspace, slots, isThere ? *wanted : slots.front())) return;
  context.dialogs.ShowMessage({"The table could not be printed.", Icon::kCritical});
}

}  // namespace qmx
