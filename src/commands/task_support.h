#pragma once

#include <optional>
#include <string>
#include <utility>

#include "base/progress.h"
#include "output/reports.h"
#include "workspace/context.h"

namespace qmx {

/// The matrix of a slot as a task reads it: the counts' part of the array, which is the whole array
/// but where the dimension fields were read afresh and differ. Keep it no longer than the slot's
/// array. Faults: 9 where the counts reach beyond the array.
class Operand {
 public:
  explicit Operand(const SlotData& data);
  const Matrix& operator*() const { return block_ ? *block_ : whole_; }
  const Matrix* operator->() const { return &**this; }

 private:
  const Matrix& whole_;
  std::optional<Matrix> block_;
};

/// While it lives, the window shows that a computation is going on. Arithmetic faults are counted
/// from its start.
class Work : public Progress {
 public:
  explicit Work(Screen& screen);
  ~Work() override;
  void Report(double fraction) override;

 private:
  Screen& screen_;
};

/// Runs a computation under a Work and raises its arithmetic faults.
template <typename Computation>
auto Compute(Context& context, Computation computation);

/// A finished result goes on show: its array and counts are stored, its dimension labels, frame and
/// window shown and its grid filled.
void PublishResult(Context& context, int slot, Matrix result);

/// Appends a report to the results list.
void AddReport(Context& context, const Lines& lines);

/// Reads the counts of A afresh from its dimension fields. False after a message where these are no
/// counts.
bool RereadDimensionsOfA(Context& context);

/// Raises the arithmetic faults met since the last Work began.
void RaiseArithmeticFaults();

template <typename Computation>
auto Compute(Context& context, Computation computation) {
  Work work(context.screen);
  auto result = computation(static_cast<Progress&>(work));
  RaiseArithmeticFaults();
  return result;
}

}  // namespace qmx
