#include <algorithm>

#include "algorithms/eigenvalues.h"
#include "algorithms/eigenvectors.h"
#include "base/arithmetic.h"
#include "base/fault.h"
#include "base/number_text.h"
#include "commands/task_support.h"
#include "commands/tasks.h"
#include "workspace/availability.h"

namespace qmx {
namespace {

EigenParameters ReadParameters(const Screen& screen) {
  EigenParameters parameters;
  parameters.tolerance = Val(screen.Text(txtError)) / 2;
  parameters.maxCycles = IntegerValue(screen.Text(txtMaxcy));
  parameters.shiftReference = Val(screen.Text(txtErs));
  parameters.additionalShift = Val(screen.Text(txtPert));
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
  Workspace& workspace = context.workspace;
  SlotData& values = workspace.At(kSlotEigenvalues);
  values.array = ColumnOf(run.eigenvalues, run.count);
  values.rows = run.count;
  values.cols = 1;
  context.screen.SetText(InfoOf(kSlotEigenvalues).rows, CStr(run.count));
  MarkAvailable(context, kSlotEigenvalues);
  context.screen.ShowWindow(kSlotEigenvalues);
  workspace.EigenvaluesComputed = true;
  AddReport(context, EigenvalueReport(run.origin, run.eigenvalues, run.count));
  Populate(context, kSlotEigenvalues);
}

std::vector<double> RandomStart(Context& context, int order) {
  context.random.Seed(context.clock.Ticks());
  std::vector<double> vector(order);
  for (double& component : vector) component = 0.5 - static_cast<double>(context.random.Next());
  return vector;
}

/// Finds the vector of eigenvalue t, stores it in its column and reports it.
void FindVector(Context& context, const Matrix& a, int t, const EigenParameters& parameters) {
  Workspace& workspace = context.workspace;
  EigenState& eigen = workspace.eigen;
  const double lambda = workspace.At(kSlotEigenvalues).array(t, 1);
  const double origin = eigen.EigenOrigin[t - 1];
  std::vector<double> vector = RandomStart(context, a.Rows());
  ClearArithmeticFaults();
  const VectorOutcome outcome =
      FindEigenvector(a, lambda, RoundToInteger(origin), parameters, vector);

  eigen.VectorStatus[t - 1] = static_cast<double>(outcome);
  Matrix& vectors = workspace.At(kSlotEigenvectors).array;
  for (int i = 1; i <= a.Rows(); ++i) vectors(i, t) = vector[i - 1];
  if (outcome == VectorOutcome::kSingular) {
    AddReport(context, SingularVectorReport(origin, lambda));
    return;
  }
  context.screen.Beep();
  if (outcome == VectorOutcome::kConverged) {
    ++eigen.ConvergedCount;
    AddReport(context, ConvergedVectorReport(origin, lambda, vector));
  } else {
    AddReport(context, UnconvergedVectorReport(origin, lambda, parameters.maxCycles));
  }
}

void FindVectors(Context& context, const Matrix& a, const EigenParameters& parameters) {
  Workspace& workspace = context.workspace;
  EigenState& eigen = workspace.eigen;
  SlotData& vectors = workspace.At(kSlotEigenvectors);
  const int found = eigen.EigenCount;
  vectors.array = Matrix(a.Rows(), found);
  eigen.VectorStatus.assign(found, 0);
  eigen.ConvergedCount = 0;
  AddReport(context, {EigenvectorHeading()});
  {
    Work work(context.screen);
    for (int t = 1; t <= found; ++t) {
      FindVector(context, a, t, parameters);
      work.Report(static_cast<double>(t) / found);
    }
  }
  if (eigen.ConvergedCount > 0) {
    vectors.rows = a.Rows();
    vectors.cols = found;
    context.screen.SetText(InfoOf(kSlotEigenvectors).rows, CStr(a.Rows()));
    // The caption counts the vectors found; the matrix keeps a column for every eigenvalue.
    context.screen.SetText(InfoOf(kSlotEigenvectors).cols, CStr(eigen.ConvergedCount));
    MarkAvailable(context, kSlotEigenvectors);
    workspace.EigenvectorsComputed = true;
    context.screen.ShowWindow(kSlotEigenvectors);
    Populate(context, kSlotEigenvectors);
  }
  AddReport(context, {ClosingLine()});
}

}  // namespace

void RunEigen(Context& context) {
  Workspace& workspace = context.workspace;
  EigenState& eigen = workspace.eigen;
  context.screen.UseResultsFont();
  context.screen.ShowResults();
  context.screen.SetEnabled(cmdShowResults, true);
  const EigenParameters parameters = ReadParameters(context.screen);
  if (!RereadDimensionsOfA(context)) return;
  const Matrix a = SquareOfA(workspace.A());
  const EigenvalueRun run = Compute(context, [&](Progress& progress) {
    return FindEigenvalues(a, parameters, eigen.ShiftIndex, progress);
  });
  eigen.EigenCount = run.count;
  eigen.EigenOrigin = run.origin;
  eigen.EigenOrigin.resize(run.count);
  if (run.count == 0) {
    // The slots hold the shifts that were taken before the run gave up.
    workspace.At(kSlotEigenvalues).array = ColumnOf(run.eigenvalues, a.Rows());
    AddReport(context, NoEigenvaluesReport());
    return;
  }
  PublishEigenvalues(context, run);
  FindVectors(context, a, parameters);
}

}  // namespace qmx
