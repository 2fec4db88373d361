// SPDX-License-Identifier: MIT
#include "workspace/computation.h"

#include <atomic>
#include <utility>

namespace qmx {
namespace {

std::shared_ptr<Computation> NextComputation() {
  static std::atomic<std::uint64_t> latest = 0;
  auto next = std::make_shared<Computation>();
  next->serial = ++latest;
  return next;
}

void KeepRest(const Workspace& workspace, Result result, Computation& kept) {
  if (result == kResultLU) {
    const Matrix& exchanges = workspace.At(kSlotExchanges).array;
    if (exchanges.Rows() == kept.computed.front().Rows()) kept.exchanges = exchanges.Shared();
  }
  if (result == kResultEigenvectors) {
    kept.eigenvalues = workspace.At(kSlotEigenvalues).array.Shared();
    for (const double status : workspace.eigen.VectorStatus) kept.columns.push_back(status == 0);
  }
  if (result == kResultSolution) {
    kept.systemMethod = workspace.SystemMethod;
    if (kept.systemMethod == kSystemByFactors) kept.factors = workspace.storedFactors;
  }
}

}  // namespace

void KeepComputation(Workspace& workspace, Result result) {
  const ResultInfo& info = InfoOf(result);
  workspace.computations[result].reset();
  if (info.operands == kFromNothing || !(workspace.*info.flag)) return;
  auto kept = NextComputation();
  ForEachSlot(info,
              [&](Slot slot) { kept->computed.push_back(workspace.At(slot).array.Shared()); });
  if (info.number != nullptr) kept->number = workspace.*info.number;
  if (info.verdict != nullptr) kept->verdict = workspace.*info.verdict;
  kept->aRows = workspace.A().rows;
  kept->aCols = workspace.A().cols;
  kept->bRows = workspace.B().rows;
  kept->bCols = workspace.B().cols;
  kept->manner = workspace.manner;
  KeepRest(workspace, result, *kept);
  workspace.computations[result] = std::move(kept);
}

void KeepChangeOfA(Workspace& workspace, Computation::Change change, Matrix before, double scalar) {
  auto kept = NextComputation();
  kept->computed.push_back(workspace.A().array.Shared());
  kept->change = change;
  kept->before = std::move(before);
  kept->scalar = scalar;
  kept->revision = workspace.revisions.a;
  workspace.computations[kResultA] = std::move(kept);
}

}  // namespace qmx
