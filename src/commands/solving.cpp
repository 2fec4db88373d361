#include "algorithms/linear_system.h"
#include "base/number_text.h"
#include "commands/dispatcher.h"
#include "commands/lifecycle.h"
#include "commands/task_support.h"
#include "workspace/availability.h"
#include "workspace/system_kind.h"

namespace qmx {
namespace {

void PublishSolution(Context& context, Matrix x) {
  SlotData& solution = context.workspace.At(kSlotSolution);
  context.workspace.SolutionComputed = true;
  context.screen.SetText(InfoOf(kSlotSolution).rows, CStr(x.Rows()));
  solution.array = std::move(x);
  MarkAvailable(context, kSlotSolution);
  Populate(context, kSlotSolution);
  context.screen.ShowWindow(kSlotSolution);
}

void ReportUnsolved(Context& context, const Lines& report) {
  context.screen.SetEnabled(cmdShowResults, true);
  context.screen.UseResultsFont();
  context.screen.ShowResults();
  AddReport(context, report);
}

SystemSolution SolveSelected(Context& context) {
  const Workspace& workspace = context.workspace;
  const Matrix& system = workspace.At(kSlotSystem).array;
  return Compute(context, [&](Progress& progress) {
    switch (workspace.SystemMethod) {
      case kSystemByFactors: {
        const StoredFactors& factors = workspace.storedFactors;
        return SolveByFactors(factors.L, factors.U, factors.exchanges, system);
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
  workspace.At(kSlotSolution).rows = *unknowns;
  workspace.At(kSlotSolution).cols = 1;
  if (solution.solved) return PublishSolution(context, std::move(solution.x));
  workspace.At(kSlotSolution).array = std::move(solution.x);
  ReportUnsolved(context, workspace.SystemMethod == kSystemOverdetermined
                              ? UnsolvedNormalEquationsReport(solution.inconsistent)
                              : UnsolvedSystemReport(solution.inconsistent));
}

}  // namespace qmx
