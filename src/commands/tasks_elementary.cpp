#include "algorithms/determinant.h"
#include "algorithms/elementary.h"
#include "algorithms/inverse.h"
#include "base/number_text.h"
#include "commands/task_support.h"
#include "commands/tasks.h"
#include "output/scalar_text.h"
#include "workspace/availability.h"

namespace qmx {
namespace {

/// A task that changes A and shows it anew. A takes the new elements only once all of them are
/// known to be numbers.
template <typename Change>
void ChangeA(Context& context, Change change) {
  Matrix& array = context.workspace.A().array;
  array = Compute(context, [&](Progress&) {
    Matrix changed(array);
    change(changed);
    return changed;
  });
  Populate(context, kSlotA);
}

void RefuseSingular(Context& context) { context.screen.ShowMessage({"MATRIX IS NOT INVERTIBLE."}); }

/// The result's counts are those of A before it is known whether there is a result.
void TakeCountsOfA(Context& context, int slot) {
  context.workspace.At(slot).rows = context.workspace.A().rows;
  context.workspace.At(slot).cols = context.workspace.A().cols;
}

}  // namespace

void RunSum(Context& context) {
  const Operand a(context.workspace.A());
  const Operand b(context.workspace.B());
  PublishResult(context, kSlotSum, Compute(context, [&](Progress&) { return Sum(*a, *b); }));
  context.workspace.SumComputed = true;
}

void RunDifference(Context& context) {
  const Operand a(context.workspace.A());
  const Operand b(context.workspace.B());
  PublishResult(context, kSlotDifference,
                Compute(context, [&](Progress&) { return Difference(*a, *b); }));
  context.workspace.DifferenceComputed = true;
}

void RunProduct(Context& context) {
  const Operand a(context.workspace.A());
  const Operand b(context.workspace.B());
  PublishResult(context, kSlotProduct,
                Compute(context, [&](Progress& progress) { return Product(*a, *b, progress); }));
  context.workspace.ProductComputed = true;
}

void RunDeterminant(Context& context) {
  const Operand a(context.workspace.A());
  Workspace& workspace = context.workspace;
  workspace.determinant =
      Compute(context, [&](Progress& progress) { return Determinant(*a, progress); });
  context.screen.SetText(lblDeterminantOfA, ScalarText(workspace.determinant));
  workspace.DeterminantComputed = true;
}

void RunTrace(Context& context) {
  const Operand a(context.workspace.A());
  Workspace& workspace = context.workspace;
  workspace.trace = Compute(context, [&](Progress&) { return Trace(*a); });
  context.screen.SetText(lblTraceOfA, ScalarText(workspace.trace));
  workspace.TraceComputed = true;
}

void RunInverse(Context& context) {
  const Operand a(context.workspace.A());
  TakeCountsOfA(context, kSlotInverse);
  auto inverse = Compute(context, [&](Progress& progress) { return Inverse(*a, progress); });
  if (!inverse) return RefuseSingular(context);
  PublishResult(context, kSlotInverse, std::move(*inverse));
  context.workspace.InverseComputed = true;
}

void RunAdjointByCofactors(Context& context) {
  const Operand a(context.workspace.A());
  PublishResult(context, kSlotAdjoint, Compute(context, [&](Progress& progress) {
                  return AdjointByCofactors(*a, progress);
                }));
  context.workspace.AdjointComputed = true;
}

void RunAdjointByInverse(Context& context) {
  const Operand a(context.workspace.A());
  TakeCountsOfA(context, kSlotAdjoint);
  auto adjoint =
      Compute(context, [&](Progress& progress) { return AdjointByInverse(*a, progress); });
  if (!adjoint) return RefuseSingular(context);
  PublishResult(context, kSlotAdjoint, std::move(*adjoint));
  context.workspace.AdjointComputed = true;
}

void RunTranspose(Context& context) {
  if (!RereadDimensionsOfA(context)) return;
  const Operand a(context.workspace.A());
  PublishResult(context, kSlotTranspose,
                Compute(context, [&](Progress&) { return Transpose(*a); }));
  context.workspace.TransposeComputed = true;
}

void RunScale(Context& context) {
  const double scalar = Val(context.screen.Text(txtScalar));
  ChangeA(context, [&](Matrix& a) { ScaleInPlace(a, scalar); });
}

void RunShift(Context& context) {
  const double shift = Val(context.screen.Text(txtShift));
  ChangeA(context, [&](Matrix& a) { ShiftInPlace(a, shift); });
}

void RunSymmetry(Context& context) {
  const Operand a(context.workspace.A());
  Workspace& workspace = context.workspace;
  workspace.AIsSymmetric = Compute(context, [&](Progress&) { return IsSymmetric(*a); });
  workspace.symmetryText = workspace.AIsSymmetric ? "Yes" : "No";
  context.screen.SetText(lblSymmetry, workspace.symmetryText);
  workspace.SymmetryComputed = true;
}

}  // namespace qmx
