#include "commands/grid_commands.h"

#include "base/number_text.h"
#include "workspace/availability.h"

namespace qmx {

void CommitCell(Context& context, int slot, int row, int col, const std::string& text) {
  Matrix& array = context.workspace.At(slot).array;
  if (array.Contains(row, col)) array(row, col) = Val(text);
}

std::string CellToolTip(int slot, int row, int col, const std::string& text) {
  const SlotInfo& info = InfoOf(slot);
  const std::string prefix = info.IsEditor() ? std::string(info.prefix) : "(";
  return prefix + CStr(row) + "," + CStr(col) + ")=" + text;
}

void ToggleWidth(Context& context, int slot) {
  SlotData& data = context.workspace.At(slot);
  data.WideDisplay = !data.WideDisplay;
  context.screen.SetGridWidth(slot, data.WideDisplay);
  Populate(context, slot);
}

void ShowSlot(Context& context, int slot) {
  if (slot >= 0 && slot < kSlotCount) context.screen.RestoreWindow(slot);
}

}  // namespace qmx
