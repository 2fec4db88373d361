#include "workspace/availability.h"

#include <algorithm>

#include "base/number_text.h"
#include "workspace/known_eigenvalues.h"

namespace qmx {
namespace {

constexpr const char* kRightHandSideHeading = " =  R.H.S.";
constexpr const char* kEigenvalueCorner = "Eigenvalues =";
constexpr const char* kEigenvectorMark = "Eigenvectors";

/// The text beside element i of the single-column windows.
std::string ColumnLabel(const Workspace& workspace, int slot, int i) {
  if (slot == kSlotSolution) return "  x(" + CStr(i) + ") = ";
  const std::vector<double>& origin = workspace.eigen.EigenOrigin;
  const bool known = i <= static_cast<int>(origin.size());
  return "EVL(" + CStr(known ? origin[i - 1] : 0.0) + ")=";
}

void EnableButtons(Screen& screen, int slot, bool enabled) {
  for (const Control& button :
       {cmdShow(slot), cmdSave(slot), cmdPrint(slot), cmdIntoA(slot), cmdIntoB(slot)}) {
    screen.SetEnabled(button, enabled);
  }
}

/// The controls that create A or B, and those that use it.
struct OperandControls {
  Control create, retrieve, clear, reset, copyToOther;
};

OperandControls ControlsOf(int operand) {
  return operand == kSlotA
             ? OperandControls{cmdCreateA, cmdRetrieveA, cmdClearA, cmdResetA, cmdIntoB(kSlotA)}
             : OperandControls{cmdCreateB, cmdRetrieveB, cmdClearB, cmdResetB, cmdIntoA(kSlotB)};
}

void MarkOperandCreated(Context& context, int operand) {
  Workspace& workspace = context.workspace;
  const Matrix& array = workspace.At(operand).array;
  SetUpSlotGrid(context, operand, array.Rows(), array.Cols());
  (operand == kSlotA ? workspace.ACreated : workspace.BCreated) = true;
  SwitchOperandControls(context, operand, true);
  if (workspace.ACreated && workspace.BCreated) context.screen.SetEnabled(cmdExchangeAandB, true);
}

}  // namespace

void SetUpSlotGrid(Context& context, int slot, int rows, int cols) {
  Workspace& workspace = context.workspace;
  SlotData& data = workspace.At(slot);
  data.gridRows = rows;
  data.gridCols = cols;
  context.screen.SetUpGrid(slot, rows, cols, data.WideDisplay);
  if (slot == kSlotSystem && cols > 0) {
    context.screen.SetCellText(slot, 0, cols, kRightHandSideHeading);
  }
  if (InfoOf(slot).kind != WindowKind::kColumnViewer) return;
  for (int i = 1; i <= rows; ++i) {
    context.screen.SetCellText(slot, i - 1, 0, ColumnLabel(workspace, slot, i));
  }
}

void Populate(Context& context, int slot) {
  const SlotData& data = context.workspace.At(slot);
  const Matrix& array = data.array;
  if (data.gridRows != array.Rows() || data.gridCols != array.Cols()) {
    SetUpSlotGrid(context, slot, array.Rows(), array.Cols());
  }
  if (slot == kSlotEigenvectors) {
    PopulateEigenvectors(context);
  } else {
    context.screen.PopulateGrid(slot, array, data.WideDisplay);
  }
}

void PopulateEigenvectors(Context& context) {
  Workspace& workspace = context.workspace;
  Screen& screen = context.screen;
  const SlotData& vectors = workspace.At(kSlotEigenvectors);
  const Matrix& values = workspace.At(kSlotEigenvalues).array;
  const EigenState& eigen = workspace.eigen;
  const int found = std::min(KnownEigenvalues(workspace), vectors.array.Cols());

  for (int c = 0; c <= found; ++c) screen.SetCellColour(kSlotEigenvectors, 0, c, Colour::kRed);
  screen.SetCellColour(kSlotEigenvectors, 1, 0, Colour::kBlue);
  screen.SetGridColour(kSlotEigenvectors, Colour::kBlue);
  screen.SetCellText(kSlotEigenvectors, 0, 0, kEigenvalueCorner);
  screen.SetCellText(kSlotEigenvectors, 1, 0, kEigenvectorMark);

  std::vector<bool> converged(vectors.array.Cols(), false);
  for (int j = 1; j <= found; ++j) {
    const double value = values(j, 1);
    screen.SetCellText(kSlotEigenvectors, 0, j,
                       vectors.WideDisplay ? CStr(value) : CStrSingle(value));
    converged[j - 1] = eigen.VectorStatus[j - 1] == 0;
  }
  screen.PopulateGridColumns(kSlotEigenvectors, vectors.array, vectors.WideDisplay, converged);
}

void MarkAvailable(Context& context, int slot) {
  SlotData& data = context.workspace.At(slot);
  SetUpSlotGrid(context, slot, data.array.Rows(), data.array.Cols());
  data.present = true;
  if (!HasPermanentFrame(slot)) context.screen.SetFrameVisible(slot, true);
  EnableButtons(context.screen, slot, true);
  if (slot == kSlotExchanges) {
    const Matrix& system = context.workspace.System().array;
    SetUpSlotGrid(context, kSlotSystem, system.Rows(), system.Cols());
  }
}

void SwitchOperandControls(Context& context, int operand, bool created) {
  Screen& screen = context.screen;
  const OperandControls controls = ControlsOf(operand);
  for (const Control& button : {cmdPrint(operand), cmdShow(operand), cmdSave(operand),
                                controls.copyToOther, controls.clear, controls.reset}) {
    screen.SetEnabled(button, created);
  }
  for (const Control& control :
       {controls.create, controls.retrieve, InfoOf(operand).rows, InfoOf(operand).cols}) {
    screen.SetEnabled(control, !created);
  }
}

void SwitchSystemControls(Context& context, bool present) {
  Screen& screen = context.screen;
  EnableButtons(screen, kSlotSystem, present);
  for (const Control& button : {cmdClearSystem, cmdResetSystem, cmdSolve})
    screen.SetEnabled(button, present);
  for (const Control& control : {cmdCreateSystem, cmdRetrieveSystem, txtEquations, txtUnknowns}) {
    screen.SetEnabled(control, !present);
  }
}

void HideResult(Context& context, int slot) {
  if (!HasPermanentFrame(slot)) context.screen.SetFrameVisible(slot, false);
  EnableButtons(context.screen, slot, false);
}

void MarkACreated(Context& context) { MarkOperandCreated(context, kSlotA); }

void MarkBCreated(Context& context) { MarkOperandCreated(context, kSlotB); }

void MarkSystemAvailable(Context& context) {
  SlotData& system = context.workspace.System();
  SetUpSlotGrid(context, kSlotSystem, system.array.Rows(), system.array.Cols());
  system.present = true;
  SwitchSystemControls(context, true);
}

void ShowDimensions(Context& context, int slot) {
  const SlotData& data = context.workspace.At(slot);
  context.screen.SetText(InfoOf(slot).rows, CStr(data.rows));
  context.screen.SetText(InfoOf(slot).cols, CStr(data.cols));
}

}  // namespace qmx
