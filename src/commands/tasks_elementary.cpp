// SPDX-License-Identifier: MIT
#include "algorithms/determinant.h"
#include "algorithms/elementary.h"
#include "algorithms/inverse.h"
#include "base/number_text.h"
#include "commands/task_support.h"
#include "commands/tasks.h"
#include "output/scalar_text.h"
#include "workspace/availability.h"
#include "workspace/computation.h"
#include "workspace/staleness.h"

namespace qmx {
namespace {

/// A task that changes A by a number and shows it anew. A takes the new elements only once all of
/// them are known to be numbers.
template <typename Change>
void ChangeA(Context& context, Computation::Change kind, double scalar, Change change) {
  Matrix& array = context.workspace.A().array;
  Matrix changed = Compute(context, [&](Progress& progress) {
    Matrix computed(array);
    change(computed, progress);
    return computed;
  });
  changed.Swap(array);
  NoteChange(context.workspace, kSlotA);
  KeepChangeOfA(context.workspace, kind, std::move(changed), scalar);
  Populate(context, kSlotA);
}

template <typename Computation>
void PublishComputed(Context& context, Slot slot, Computation computation) {
  Publish(context, slot, Publication(Compute(context, computation)));
}

/// The computation may find that there is no inverse. The result's counts are those of A before it
/// is known.
template <typename Computation>
void PublishUnlessSingular(Context& context, Slot slot, Computation computation) {
  SlotData& data = context.workspace.At(slot);
  data.rows = context.workspace.A().rows;
  data.cols = context.workspace.A().cols;
  std::optional<Matrix> result = Compute(context, computation);
  if (result) return Publish(context, slot, Publication(std::move(*result)));
  context.dialogs.ShowMessage({"MATRIX IS NOT INVERTIBLE."});
}

template <typename Computation>
void PublishNumber(Context& context, Result result, Computation computation) {
  const ResultInfo& info = InfoOf(result);
  const double number = Compute(context, computation);
  context.panel.SetText(info.label, ScalarText(number));
  context.workspace.*info.number = number;
  context.workspace.*info.flag = true;
  NoteComputed(context.workspace, result);
}

void NoteAdjointsWay(Workspace& workspace, bool byCofactors) {
  workspace.manner.isKnown = true;
  workspace.manner.byCofactors = byCofactors;
}

}  // namespace

void RunSum(Context& context) {
  const Operand a(context.workspace.A());
  const Operand b(context.workspace.B());
  PublishComputed(context, kSlotSum, [&](Progress& progress) { return Sum(*a, *b, progress); });
}

void RunDifference(Context& context) {
  const Operand a(context.workspace.A());
  const Operand b(context.workspace.B());
  PublishComputed(context, kSlotDifference,
                  [&](Progress& progress) { return Difference(*a, *b, progress); });
}

void RunProduct(Context& context) {
  const Operand a(context.workspace.A());
  const Operand b(context.workspace.B());
  PublishComputed(context, kSlotProduct,
                  [&](Progress& progress) { return Product(*a, *b, progress); });
}

void RunDeterminant(Context& context) {
  const Operand a(context.workspace.A());
  PublishNumber(context, kResultDeterminant,
                [&](Progress& progress) { return Determinant(*a, progress); });
}

void RunTrace(Context& context) {
  const Operand a(context.workspace.A());
  PublishNumber(context, kResultTrace, [&](Progress&) { return Trace(*a); });
}

void RunInverse(Context& context) {
  const Operand a(context.workspace.A());
  PublishUnlessSingular(context, kSlotInverse,
                        [&](Progress& progress) { return Inverse(*a, progress); });
}

void RunAdjointByCofactors(Context& context) {
  const Operand a(context.workspace.A());
  NoteAdjointsWay(context.workspace, true);
  PublishComputed(context, kSlotAdjoint,
                  [&](Progress& progress) { return AdjointByCofactors(*a, progress); });
}

void RunAdjointByInverse(Context& context) {
  const Operand a(context.workspace.A());
  NoteAdjointsWay(context.workspace, false);
  PublishUnlessSingular(context, kSlotAdjoint,
                        [&](Progress& progress) { return AdjointByInverse(*a, progress); });
}

void RunTranspose(Context& context) {
  if (!RereadDimensionsOfA(context)) return;
  const Operand a(context.workspace.A());
  PublishComputed(context, kSlotTranspose,
                  [&](Progress& progress) { return Transpose(*a, progress); });
}

void RunScale(Context& context) {
  const double scalar = Val(context.panel.Text(txtScalar));
  ChangeA(context, Computation::Change::kScaled, scalar,
          [&](Matrix& a, Progress& progress) { ScaleInPlace(a, scalar, progress); });
}

void RunShift(Context& context) {
  const double shift = Val(context.panel.Text(txtShift));
  ChangeA(context, Computation::Change::kShifted, shift,
          [&](Matrix& a, Progress&) { ShiftInPlace(a, shift); });
}

void RunSymmetry(Context& context) {
  const Operand a(context.workspace.A());
  const bool symmetric =
      Compute(context, [&](Progress& progress) { return IsSymmetric(*a, progress); });
  PublishVerdict(context, kResultSymmetry, symmetric ? "Yes" : "No");
  context.workspace.AIsSymmetric = symmetric;
}

}  // namespace qmx
