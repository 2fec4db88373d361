// SPDX-License-Identifier: MIT
#include "commands/task_support.h"

#include <algorithm>
#include <utility>

#include "base/fault.h"
#include "commands/lifecycle.h"
#include "workspace/staleness.h"

namespace qmx {

Operand::Operand(const SlotData& data) : whole_(data.array) {
  if (data.rows == whole_.Rows() && data.cols == whole_.Cols()) return;
  if (data.rows > whole_.Rows() || data.cols > whole_.Cols()) {
    throw RuntimeFault(Fault::kSubscriptOutOfRange);
  }
  Matrix block(data.rows, data.cols);
  for (int i = 1; i <= data.rows && data.cols > 0; ++i) {
    std::copy_n(whole_.Row(i), data.cols, block.Row(i));
  }
  block_ = std::move(block);
}

void PublishVerdict(Context& context, Result result, std::string text) {
  const ResultInfo& info = InfoOf(result);
  context.panel.SetText(info.label, text);
  context.workspace.*info.verdict = std::move(text);
  context.workspace.*info.flag = true;
  NoteComputed(context.workspace, result);
}

bool RereadDimensionsOfA(Context& context) {
  const std::optional<int> rows = ReadDimension(context, txtRowsA, 0);
  if (!rows) return false;
  const std::optional<int> cols = ReadDimension(context, txtColsA, 0);
  if (!cols) return false;
  context.workspace.A().rows = *rows;
  context.workspace.A().cols = *cols;
  return true;
}

}  // namespace qmx
