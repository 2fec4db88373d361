// SPDX-License-Identifier: MIT
#include "algorithms/linear_system.h"
#include "base/number_text.h"
#include "commands/dispatcher.h"
#include "commands/lifecycle.h"
#include "commands/task_support.h"
#include "output/reports.h"
#include "workspace/availability.h"

namespace qmx {
namespace {

void ReportUnsolved(Context& context, const Lines& report) {
  context.panel.SetEnabled(cmdShowResults, true);
  context.log.ShowResults();
  context.log.Append(report);
}

SystemSolution SolveSelected(Context& context) {
  const Workspace& workspace = context.workspace;
  const Matrix& system = workspace.At(kSlotSystem).array;
  return Compute(context, [&](Progress& progress) {
    switch (workspace.SystemMethod) {
      case kSystemByFactors: {
        const StoredFactors& factors = workspace.storedFactors;
        return SolveByFactors(factors.L, factors.U, factors.exchanges, system, progress);
      }
      case kSystemOverdetermined:
        return SolveLeastSquares(system, progress);
      default:
        return SolveOneShot(system, progress);
    }
  });
}

}  // namespace

void PressSolve(Context& context) {
  Workspace& workspace = context.workspace;
  const std::optional<int> unknowns = ReadDimension(context, txtUnknowns);
  if (!unknowns) return;
  SystemSolution solution = SolveSelected(context);
  SlotData& slot = workspace.At(kSlotSolution);
  if (solution.solved) {
    Publish(context, kSlotSolution, Publication(std::move(solution.x)));
  } else {
    slot.array = std::move(solution.x);
    ReportUnsolved(context, workspace.SystemMethod == kSystemOverdetermined
                                ? UnsolvedNormalEquationsReport(solution.inconsistent)
                                : UnsolvedSystemReport(solution.inconsistent));
  }
  // The counts are those of the fields, whatever the System has.
  slot.rows = *unknowns;
  slot.cols = 1;
}

}  // namespace qmx
