// SPDX-License-Identifier: MIT
#include <algorithm>
#include <exception>
#include <utility>

#include "algorithms/eigenvalues.h"
#include "algorithms/eigenvectors.h"
#include "base/arithmetic.h"
#include "base/fault.h"
#include "base/number_text.h"
#include "commands/task_support.h"
#include "commands/tasks.h"
#include "output/reports.h"
#include "workspace/availability.h"

namespace qmx {
namespace {

EigenParameters ReadParameters(const Panel& panel) {
  EigenParameters parameters;
  parameters.tolerance = Val(panel.Text(txtError)) / 2;
  parameters.maxCycles = IntegerValue(panel.Text(txtMaxcy));
  parameters.shiftReference = Val(panel.Text(txtErs));
  parameters.additionalShift = Val(panel.Text(txtPert));
  return parameters;
}

/// The matrix of order rows(A) that the task works on, whatever the columns are.
Matrix SquareOfA(const SlotData& a) {
  SlotData square;
  const int order = a.rows;
  if (order > a.array.Rows() || order > a.array.Cols())
    throw RuntimeFault(Fault::kSubscriptOutOfRange);
  square.array = Matrix(order, order);
  for (int i = 1; i <= order; ++i) std::copy_n(a.array.Row(i), order, square.array.Row(i));
  return std::move(square.array);
}

Matrix ColumnOf(const std::vector<double>& values, int count) {
  Matrix column(count, 1);
  std::copy_n(values.begin(), count, column.Data());
  return column;
}

void PublishEigenvalues(Context& context, const EigenvalueRun& run) {
  context.log.Append(EigenvalueReport(run.origin, run.eigenvalues, run.count));
  Publish(context, kSlotEigenvalues, Publication(ColumnOf(run.eigenvalues, run.count)));
}

/// What inverse iteration found for one eigenvalue.
struct FoundVector {
  VectorOutcome outcome;
  std::vector<double> components;
};

/// The vectors of the eigenvalues one after the other, up to the one that faulted, if any.
struct VectorRun {
  std::vector<FoundVector> found;
  std::exception_ptr fault;
};

std::vector<double> RandomStart(Random& random, Clock& clock, int order) {
  random.Seed(clock.Ticks());
  std::vector<double> vector(order);
  for (double& component : vector) component = 0.5 - static_cast<double>(random.Next());
  return vector;
}

VectorRun IterateVectors(Context& context, const Matrix& a, const EigenvalueRun& values,
                         const EigenParameters& parameters, Progress& progress) {
  VectorRun run;
  try {
    for (int t = 0; t < values.count; ++t) {
      FoundVector next{{}, RandomStart(context.random, context.clock, a.Rows())};
      ClearArithmeticFaults();
      Stage stage(progress, static_cast<double>(t) / values.count,
                  static_cast<double>(t + 1) / values.count);
      next.outcome = FindEigenvector(a, values.eigenvalues[t], RoundToInteger(values.origin[t]),
                                     parameters, next.components, stage);
      run.found.push_back(std::move(next));
      progress.Report(static_cast<double>(t + 1) / values.count);
    }
  } catch (const RuntimeFault&) {
    run.fault = std::current_exception();
  }
  ClearArithmeticFaults();
  return run;
}

/// Stores the vector of eigenvalue t in its column and reports it.
void KeepVector(Context& context, const FoundVector& vector, int t, std::int32_t maxCycles) {
  Workspace& workspace = context.workspace;
  EigenState& eigen = workspace.eigen;
  const double lambda = workspace.At(kSlotEigenvalues).array(t, 1);
  const double origin = eigen.EigenOrigin[t - 1];
  eigen.VectorStatus[t - 1] = static_cast<double>(vector.outcome);
  Matrix& vectors = workspace.At(kSlotEigenvectors).array;
  for (int i = 1; i <= vectors.Rows(); ++i) vectors(i, t) = vector.components[i - 1];
  if (vector.outcome == VectorOutcome::kSingular)
    return context.log.Append(SingularVectorReport(origin, lambda));
  context.log.Beep();
  if (vector.outcome == VectorOutcome::kConverged) {
    ++eigen.ConvergedCount;
    context.log.Append(ConvergedVectorReport(origin, lambda, vector.components));
  } else {
    context.log.Append(UnconvergedVectorReport(origin, lambda, maxCycles));
  }
}

void FindVectors(Context& context, const Matrix& a, const EigenvalueRun& values,
                 const EigenParameters& parameters) {
  EigenState& eigen = context.workspace.eigen;
  SlotData& vectors = context.workspace.At(kSlotEigenvectors);
  context.log.Append({EigenvectorHeading()});
  const VectorRun run = Compute(context, [&](Progress& progress) {
    return IterateVectors(context, a, values, parameters, progress);
  });
  vectors.array = Matrix(a.Rows(), values.count);
  eigen.VectorStatus.assign(values.count, 0);
  eigen.ConvergedCount = 0;
  int t = 0;
  for (const FoundVector& vector : run.found)
    KeepVector(context, vector, ++t, parameters.maxCycles);
  if (run.fault) std::rethrow_exception(run.fault);
  if (eigen.ConvergedCount > 0) {
    Publish(context, kSlotEigenvectors, Publication(std::move(vectors.array)));
    // The caption counts the vectors found; the matrix keeps a column for every eigenvalue.
    context.panel.SetText(InfoOf(kSlotEigenvectors).cols, CStr(eigen.ConvergedCount));
  }
  context.log.Append({ClosingLine()});
}

}  // namespace

void RunEigen(Context& context) {
  Workspace& workspace = context.workspace;
  EigenState& eigen = workspace.eigen;
  context.log.ShowResults();
  context.panel.SetEnabled(cmdShowResults, true);
  const EigenParameters parameters = ReadParameters(context.panel);
  if (!RereadDimensionsOfA(context)) return;
  const Matrix a = SquareOfA(workspace.A());
  workspace.manner.isKnown = true;
  workspace.manner.eigen = parameters;
  workspace.manner.shiftIndex = eigen.ShiftIndex;
  const EigenvalueRun run = Compute(context, [&](Progress& progress) {
    return FindEigenvalues(a, parameters, eigen.ShiftIndex, progress);
  });
  eigen.EigenCount = run.count;
  eigen.EigenOrigin = run.origin;
  eigen.EigenOrigin.resize(run.count);
  if (run.count == 0) {
    // The slots hold the shifts that were taken before the run gave up.
    workspace.At(kSlotEigenvalues).array = ColumnOf(run.eigenvalues, a.Rows());
    context.log.Append(NoEigenvaluesReport());
    return;
  }
  PublishEigenvalues(context, run);
  FindVectors(context, a, run, parameters);
}

}  // namespace qmx
