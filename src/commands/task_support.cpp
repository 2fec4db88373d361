#include "commands/task_support.h"

#include <algorithm>

#include "base/arithmetic.h"
#include "base/fault.h"
#include "commands/lifecycle.h"
#include "workspace/availability.h"

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

Work::Work(Screen& screen) : screen_(screen) {
  screen_.BeginWork();
  ClearArithmeticFaults();
}

Work::~Work() { screen_.EndWork(); }

void Work::Report(double fraction) {
  const KeepArithmeticFaults keep;
  screen_.ReportProgress(fraction);
}

void RaiseArithmeticFaults() { CheckArithmetic(); }

void PublishResult(Context& context, int slot, Matrix result) {
  SlotData& data = context.workspace.At(slot);
  data.rows = result.Rows();
  data.cols = result.Cols();
  data.array = std::move(result);
  ShowDimensions(context, slot);
  MarkAvailable(context, slot);
  context.screen.ShowWindow(slot);
  Populate(context, slot);
}

void AddReport(Context& context, const Lines& lines) {
  for (const std::string& line : lines) context.screen.AddResultLine(line);
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
