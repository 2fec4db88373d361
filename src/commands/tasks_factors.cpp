#include "algorithms/definiteness.h"
#include "algorithms/lu.h"
#include "algorithms/qr.h"
#include "algorithms/special_matrix.h"
#include "base/number_text.h"
#include "commands/lifecycle.h"
#include "commands/task_support.h"
#include "commands/tasks.h"
#include "workspace/availability.h"
#include "workspace/field_table.h"
#include "workspace/system_kind.h"

namespace qmx {
namespace {

/// Counts of a result that is not, or not yet, published.
void SetCounts(Context& context, int slot, int rows, int cols) {
  context.workspace.At(slot).rows = rows;
  context.workspace.At(slot).cols = cols;
}

/// A result whose counts and captions are set already.
void ShowFactor(Context& context, int slot) {
  MarkAvailable(context, slot);
  Populate(context, slot);
  context.screen.ShowWindow(slot);
}

void PublishExchanges(Context& context) {
  Workspace& workspace = context.workspace;
  const Matrix& exchanges = workspace.At(kSlotExchanges).array;
  workspace.At(kSlotPermutation).array = PermutationOf(exchanges);
  SetCounts(context, kSlotPermutation, exchanges.Rows(), exchanges.Rows());
  ShowDimensions(context, kSlotPermutation);
  MarkAvailable(context, kSlotPermutation);
  Populate(context, kSlotPermutation);

  SetCounts(context, kSlotExchanges, exchanges.Rows(), 1);
  context.screen.SetText(InfoOf(kSlotExchanges).rows, CStr(exchanges.Rows()));
  MarkAvailable(context, kSlotExchanges);
  context.screen.ShowWindow(kSlotExchanges);
  Populate(context, kSlotExchanges);
}

/// Keeps the factors of a square matrix for solving systems, unless a pair is kept already.
void StoreFactors(Context& context) {
  Workspace& workspace = context.workspace;
  const SlotData& l = workspace.At(kSlotL);
  const SlotData& u = workspace.At(kSlotU);
  const SlotData& exchanges = workspace.At(kSlotExchanges);
  if (!u.array.IsSquare() || workspace.StoredFactorsValid) return;
  workspace.StoredFactorsValid = true;
  context.screen.SetEnabled(cmdSaveLU, true);
  workspace.storedFactors = {l.array, u.array, exchanges.array, l.rows,        l.cols,
                             u.rows,  u.cols,  exchanges.rows,  exchanges.cols};
  if (!context.screen.IsSelected(OptSystem(kSystemByFactors))) return;
  context.screen.SetText(txtEquations, CStr(l.rows));
  context.screen.SetText(txtUnknowns, CStr(l.rows));
  context.screen.SetEnabled(cmdCreateSystem, true);
  context.screen.SetEnabled(cmdRetrieveSystem, true);
}

/// Ones or the diagonal of the identity, or random entries. A text where the entries do not fit
/// into the matrix.
std::string FillSpecialMatrix(Context& context, Matrix& created) {
  const Screen& screen = context.screen;
  if (screen.IsSelected(OptCreate(1))) FillOnes(created);
  if (screen.IsSelected(OptCreate(2)) && !FillIdentity(created)) {
    return "An identity matrix cannot have more rows than columns: its diagonal would leave the "
           "matrix.";
  }
  if (!screen.IsSelected(OptCreate(3))) return {};
  const RandomKind kind{Val(screen.Text(txtRandLow)), Val(screen.Text(txtRandHigh)),
                        screen.IsSelected(chkSymmetric), screen.IsSelected(chkIntegers)};
  context.random.Seed(context.clock.Ticks());
  if (FillRandom(created, kind, [&] { return context.random.Next(); })) return {};
  return "A symmetric matrix cannot have more columns than rows: its mirror image would leave the "
         "matrix.";
}

}  // namespace

void RunLU(Context& context) {
  Workspace& workspace = context.workspace;
  const Operand a(workspace.A());
  const bool pivoting = context.screen.IsSelected(OptPivot(0));
  LuFactors factors =
      Compute(context, [&](Progress& progress) { return FactorLu(*a, pivoting, progress); });

  SetCounts(context, kSlotL, a->Rows(), a->Rows());
  SetCounts(context, kSlotU, a->Rows(), a->Cols());
  ShowDimensions(context, kSlotL);
  ShowDimensions(context, kSlotU);
  workspace.LUComputed = factors.factored;
  workspace.At(kSlotU).array = std::move(factors.U);
  workspace.At(kSlotExchanges).array = std::move(factors.exchanges);
  if (!factors.factored) {
    context.screen.ShowMessage({"CAN'T FACTOR WITHOUT PIVOTING."});
    return;
  }
  workspace.At(kSlotL).array = std::move(factors.L);
  ShowFactor(context, kSlotL);
  ShowFactor(context, kSlotU);
  if (factors.exchangeCount != 0) PublishExchanges(context);
  StoreFactors(context);
}

void RunQR(Context& context) {
  Workspace& workspace = context.workspace;
  const Operand a(workspace.A());
  QrFactors factors = Compute(context, [&](Progress& progress) { return FactorQr(*a, progress); });
  for (const int slot : {kSlotQ, kSlotR}) {
    SetCounts(context, slot, slot == kSlotQ ? a->Rows() : a->Cols(), a->Cols());
    ShowDimensions(context, slot);
  }
  workspace.At(kSlotQ).array = std::move(factors.Q);
  workspace.At(kSlotR).array = std::move(factors.R);
  if (!factors.factored) {
    context.screen.ShowMessage({"CAN'T FACTOR."});
    return;
  }
  ShowFactor(context, kSlotQ);
  ShowFactor(context, kSlotR);
  workspace.QRComputed = true;
}

void RunDefiniteness(Context& context) {
  Workspace& workspace = context.workspace;
  RunSymmetry(context);
  if (!workspace.AIsSymmetric) {
    context.screen.ShowMessage({"Matrix A is not symmetric.", Icon::kCritical});
    return;
  }
  const Operand a(workspace.A());
  const DefinitenessReport report =
      Compute(context, [&](Progress& progress) { return TestDefiniteness(*a, progress); });
  context.screen.Beep();
  workspace.DefinitenessComputed = true;
  workspace.definitenessText = DefinitenessText(report.verdict);
  context.screen.SetText(lblDefiniteness, workspace.definitenessText);

  context.screen.AddResultLine(SmallestPivotLine(report.overallSmallestPivot));
  context.screen.UseResultsFont();
  AddReport(context, DefinitenessTable(report));
  context.screen.ShowResults();
  context.screen.SetEnabled(cmdShowResults, true);
}

void RunSpecialMatrix(Context& context) {
  const auto size = ReadDimensions(context, txtRowsCreated, txtColsCreated);
  if (!size) return;
  SlotData& created = context.workspace.At(kSlotCreated);
  created.rows = size->rows;
  created.cols = size->cols;
  created.array = Matrix(size->rows, size->cols);
  MarkAvailable(context, kSlotCreated);
  context.screen.ShowWindow(kSlotCreated);
  context.screen.LetWindowsPaint();
  Matrix filled(size->rows, size->cols);
  const std::string refusal =
      Compute(context, [&](Progress&) { return FillSpecialMatrix(context, filled); });
  created.array = std::move(filled);
  Populate(context, kSlotCreated);
  if (!refusal.empty()) context.screen.ShowMessage({refusal, Icon::kCritical});
}

}  // namespace qmx
