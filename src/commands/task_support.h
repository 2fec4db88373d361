// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "base/arithmetic.h"
#include "base/progress.h"
#include "workspace/context.h"
#include "workspace/result_table.h"

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

/// Runs a computation where computations run and returns what it returns. Faults: those that it
/// throws, and those of its arithmetic.
template <typename Computation>
auto Compute(Context& context, Computation computation) {
  std::optional<decltype(computation(std::declval<Progress&>()))> result;
  context.work.Run([&](Progress& progress) {
    ClearArithmeticFaults();
    result.emplace(computation(progress));
    CheckArithmetic();
  });
  return std::move(*result);
}

/// A verdict goes on show: its label is set, and its result's flag.
void PublishVerdict(Context& context, Result result, std::string text);

/// Reads the counts of A afresh from its dimension fields. False after a message where these are no
/// counts.
bool RereadDimensionsOfA(Context& context);

}  // namespace qmx
