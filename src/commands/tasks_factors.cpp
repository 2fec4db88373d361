// SPDX-License-Identifier: MIT
#include "algorithms/definiteness.h"
#include "algorithms/lu.h"
#include "algorithms/qr.h"
#include "algorithms/special_matrix.h"
#include "base/number_text.h"
#include "commands/lifecycle.h"
#include "commands/task_support.h"
#include "commands/tasks.h"
#include "output/reports.h"
#include "workspace/availability.h"
#include "workspace/staleness.h"

namespace qmx {
namespace {

/// Counts and captions of a result that may not be published.
void ShowCounts(Context& context, Slot slot, int rows, int cols) {
  context.workspace.At(slot).rows = rows;
  context.workspace.At(slot).cols = cols;
  ShowDimensions(context, slot);
}

void PublishExchanges(Context& context, Matrix exchanges) {
  Publish(context, kSlotPermutation, Publication(PermutationOf(exchanges)), Showing::kInPlace);
  Publish(context, kSlotExchanges, Publication(std::move(exchanges)));
}

/// Keeps the factors of a square matrix for solving systems, unless a pair is kept already.
void StoreFactors(Context& context) {
  Workspace& workspace = context.workspace;
  const SlotData& l = workspace.At(kSlotL);
  const SlotData& u = workspace.At(kSlotU);
  const SlotData& exchanges = workspace.At(kSlotExchanges);
  if (!u.array.IsSquare() || workspace.StoredFactorsValid) return;
  StoredFactors stored;
  stored.L = l.array.Shared();
  stored.U = u.array.Shared();
  stored.exchanges = exchanges.array.Shared();
  stored.lRows = l.rows;
  stored.lCols = l.cols;
  stored.uRows = u.rows;
  stored.uCols = u.cols;
  stored.exchangeRows = exchanges.rows;
  stored.exchangeCols = exchanges.cols;
  workspace.storedFactors = std::move(stored);
  workspace.StoredFactorsValid = true;
  context.panel.SetEnabled(cmdSaveLU, true);
  if (!context.panel.IsSelected(OptSystem(kSystemByFactors))) return;
  context.panel.SetText(txtEquations, CStr(l.rows));
  context.panel.SetText(txtUnknowns, CStr(l.rows));
  context.panel.SetEnabled(cmdCreateSystem, true);
  context.panel.SetEnabled(cmdRetrieveSystem, true);
}

/// What the options ask of a special matrix.
struct SpecialKind {
  bool ones;
  bool identity;
  std::optional<RandomKind> random;
};

SpecialKind ReadSpecialKind(const Panel& panel) {
  SpecialKind kind{
      panel.IsSelected(OptCreate(kCreateOnes)), panel.IsSelected(OptCreate(kCreateIdentity)), {}};
  if (panel.IsSelected(OptCreate(kCreateRandom))) {
    kind.random = {Val(panel.Text(txtRandLow)), Val(panel.Text(txtRandHigh)),
                   panel.IsSelected(chkSymmetric), panel.IsSelected(chkIntegers)};
  }
  return kind;
}

/// Puts the Workspace back as it was unless told that it is to be kept.
class Restore {
 public:
  explicit Restore(Workspace& workspace) : workspace_(workspace), before_(workspace) {}
  Restore(const Restore&) = delete;
  Restore& operator=(const Restore&) = delete;
  ~Restore() {
    if (!kept_) workspace_ = std::move(before_);
  }
  void Keep() { kept_ = true; }

 private:
  Workspace& workspace_;
  Workspace before_;
  bool kept_ = false;
};

/// Ones or the diagonal of the identity, or random entries. A text where the entries do not fit
/// into the matrix.
std::string FillSpecialMatrix(Context& context, const SpecialKind& kind, Matrix& created,
                              Progress& progress) {
  if (kind.ones) FillOnes(created);
  if (kind.identity && !FillIdentity(created)) {
    return "An identity matrix cannot have more rows than columns: its diagonal would leave the "
           "matrix.";
  }
  if (!kind.random) return {};
  context.random.Seed(context.clock.Ticks());
  const auto draw = [&] { return context.random.Next(); };
  if (FillRandom(created, *kind.random, draw, progress)) return {};
  return "A symmetric matrix cannot have more columns than rows: its mirror image would leave the "
         "matrix.";
}

}  // namespace

void RunLU(Context& context) {
  Workspace& workspace = context.workspace;
  const Operand a(workspace.A());
  const bool pivoting = context.panel.IsSelected(OptPivot(kPivotYes));
  LuFactors factors =
      Compute(context, [&](Progress& progress) { return FactorLu(*a, pivoting, progress); });
  workspace.LUComputed = false;
  workspace.manner.isKnown = true;
  workspace.manner.pivoting = pivoting;
  if (!factors.factored) {
    ShowCounts(context, kSlotL, a->Rows(), a->Rows());
    ShowCounts(context, kSlotU, a->Rows(), a->Cols());
    workspace.At(kSlotU).array = std::move(factors.U);
    workspace.At(kSlotExchanges).array = std::move(factors.exchanges);
    context.dialogs.ShowMessage({"CAN'T FACTOR WITHOUT PIVOTING."});
    return;
  }
  Publish(context, kSlotL, Publication(std::move(factors.L)));
  Publish(context, kSlotU, Publication(std::move(factors.U)));
  if (factors.exchangeCount != 0) {
    PublishExchanges(context, std::move(factors.exchanges));
  } else {
    workspace.At(kSlotExchanges).array = std::move(factors.exchanges);
  }
  // The order of the rows belongs to the factors.
  NoteComputed(workspace, kResultLU);
  StoreFactors(context);
}

void RunQR(Context& context) {
  Workspace& workspace = context.workspace;
  const Operand a(workspace.A());
  QrFactors factors = Compute(context, [&](Progress& progress) { return FactorQr(*a, progress); });
  if (!factors.factored) {
    ShowCounts(context, kSlotQ, a->Rows(), a->Cols());
    ShowCounts(context, kSlotR, a->Cols(), a->Cols());
    workspace.At(kSlotQ).array = std::move(factors.Q);
    workspace.At(kSlotR).array = std::move(factors.R);
    context.dialogs.ShowMessage({"CAN'T FACTOR."});
    return;
  }
  Publish(context, kSlotQ, Publication(std::move(factors.Q)));
  Publish(context, kSlotR, Publication(std::move(factors.R)));
}

void RunDefiniteness(Context& context) {
  Workspace& workspace = context.workspace;
  RunSymmetry(context);
  if (!workspace.AIsSymmetric) {
    context.dialogs.ShowMessage({"Matrix A is not symmetric.", Icon::kCritical});
    return;
  }
  const Operand a(workspace.A());
  const DefinitenessReport report =
      Compute(context, [&](Progress& progress) { return TestDefiniteness(*a, progress); });
  context.log.Beep();
  PublishVerdict(context, kResultDefiniteness, DefinitenessText(report.verdict));
  context.log.Append({SmallestPivotLine(report.overallSmallestPivot)});
  context.log.Append(DefinitenessTable(report));
  context.log.ShowResults();
  context.panel.SetEnabled(cmdShowResults, true);
}

void RunSpecialMatrix(Context& context) {
  const auto size = ReadDimensions(context, txtRowsCreated, txtColsCreated);
  if (!size) return;
  SlotData& created = context.workspace.At(kSlotCreated);
  // A fault on the way leads to a project that is saved: it is to hold the matrix of before.
  Restore before(context.workspace);
  created.rows = size->rows;
  created.cols = size->cols;
  created.array = Matrix(size->rows, size->cols);
  MarkAvailable(context, kSlotCreated);
  context.windows.ShowWindow(kSlotCreated);
  context.windows.LetWindowsPaint();
  Matrix filled(size->rows, size->cols);
  const SpecialKind kind = ReadSpecialKind(context.panel);
  const std::string refusal = Compute(context, [&](Progress& progress) {
    return FillSpecialMatrix(context, kind, filled, progress);
  });
  created.array = std::move(filled);
  before.Keep();
  Populate(context, kSlotCreated);
  if (!refusal.empty()) context.dialogs.ShowMessage({refusal, Icon::kCritical});
}

}  // namespace qmx
