// SPDX-License-Identifier: MIT
#include "workspace/availability.h"

#include <algorithm>
#include <utility>

#include "base/number_text.h"
#include "workspace/known_eigenvalues.h"
#include "workspace/staleness.h"

namespace qmx {
namespace {

constexpr const char* kRightHandSideHeading = " =  R.H.S.";
constexpr const char* kEigenvalueCorner = "Eigenvalues =";
constexpr const char* kEigenvectorMark = "Eigenvectors";

/// The text beside element i of the single-column windows.
std::string ColumnLabel(const Workspace& workspace, Slot slot, int i) {
  if (slot == kSlotSolution) return "  x(" + CStr(i) + ") = ";
  const std::vector<double>& origin = workspace.eigen.EigenOrigin;
  const bool known = i <= static_cast<int>(origin.size());
  return "EVL(" + CStr(known ? origin[i - 1] : 0.0) + ")=";
}

GridContent Shape(const Workspace& workspace, Slot slot, int rows, int cols) {
  GridContent content;
  content.rows = rows;
  content.cols = cols;
  if (slot == kSlotSystem && cols > 0) content.headings = {{0, cols, kRightHandSideHeading}};
  if (InfoOf(slot).kind != WindowKind::kColumnViewer) return content;
  for (int i = 1; i <= rows; ++i)
    content.headings.push_back({i - 1, 0, ColumnLabel(workspace, slot, i)});
  return content;
}

void PairEigenvectors(const Context& context, GridContent& content) {
  const Workspace& workspace = context.workspace;
  const Matrix& values = workspace.At(kSlotEigenvalues).array;
  const int found = std::min(KnownEigenvalues(workspace), content.cols);
  const bool wide = context.grids.IsWide(kSlotEigenvectors);
  for (int c = 0; c <= found; ++c) content.colours.push_back({0, c, Colour::kRed});
  content.colours.push_back({1, 0, Colour::kBlue});
  content.colour = Colour::kBlue;
  content.texts = {{0, 0, kEigenvalueCorner}, {1, 0, kEigenvectorMark}};
  content.columns.assign(content.cols, false);
  for (int j = 1; j <= found; ++j) {
    content.texts.push_back({0, j, wide ? CStr(values(j, 1)) : CStrSingle(values(j, 1))});
    content.columns[j - 1] = workspace.eigen.VectorStatus[j - 1] == 0;
  }
}

/// A slot's grid as its array fills it.
GridContent Filled(const Context& context, Slot slot) {
  const Matrix& array = context.workspace.At(slot).array;
  GridContent content = Shape(context.workspace, slot, array.Rows(), array.Cols());
  content.elements = &array;
  if (slot == kSlotEigenvectors) PairEigenvectors(context, content);
  return content;
}

void EnableButtons(Panel& panel, Slot slot, bool enabled) {
  for (const Control& button :
       {cmdShow(slot), cmdSave(slot), cmdPrint(slot), cmdIntoA(slot), cmdIntoB(slot)}) {
    panel.SetEnabled(button, enabled);
  }
}

/// The controls that create A or B, and those that use it.
struct OperandControls {
  Control create, retrieve, clear, reset, copyToOther;
};

OperandControls ControlsOf(Slot operand) {
  return operand == kSlotA
             ? OperandControls{cmdCreateA, cmdRetrieveA, cmdClearA, cmdResetA, cmdIntoB(kSlotA)}
             : OperandControls{cmdCreateB, cmdRetrieveB, cmdClearB, cmdResetB, cmdIntoA(kSlotB)};
}

/// What follows on the main window once a slot's grid is set up.
void SwitchControls(Context& context, Slot slot) {
  Workspace& workspace = context.workspace;
  const ResultInfo& result = ResultOf(slot);
  if (slot == result.lastSlot) {
    workspace.*result.flag = true;
    NoteComputed(workspace, result.result);
  }
  NoteChange(workspace, slot);
  if (slot == kSlotSystem) return SwitchSystemControls(context, true);
  if (slot == kSlotA || slot == kSlotB) {
    SwitchOperandControls(context, slot, true);
    if (workspace.ACreated && workspace.BCreated) context.panel.SetEnabled(cmdExchangeAandB, true);
    return;
  }
  if (!HasPermanentFrame(slot)) context.panel.SetFrameVisible(slot, true);
  EnableButtons(context.panel, slot, true);
  if (slot != kSlotExchanges) return;
  const Matrix& system = workspace.System().array;
  SetUpSlotGrid(context, kSlotSystem, system.Rows(), system.Cols());
}

}  // namespace

void SetUpSlotGrid(Context& context, Slot slot, int rows, int cols) {
  context.grids.Show(slot, Shape(context.workspace, slot, rows, cols));
}

void Populate(Context& context, Slot slot) {
  GridContent content = Filled(context, slot);
  content.anew = false;
  context.grids.Show(slot, content);
}

void MarkAvailable(Context& context, Slot slot) {
  const Matrix& array = context.workspace.At(slot).array;
  SetUpSlotGrid(context, slot, array.Rows(), array.Cols());
  SwitchControls(context, slot);
}

void Publish(Context& context, Slot slot, Publication matrix, Showing showing) {
  SlotData& data = context.workspace.At(slot);
  data.rows = matrix.rows;
  data.cols = matrix.cols;
  data.array = std::move(matrix.array);
  context.grids.Show(slot, Filled(context, slot));
  if (showing == Showing::kFromFile || !InfoOf(slot).filedAsVector) {
    ShowDimensions(context, slot);
  } else {
    context.panel.SetText(InfoOf(slot).rows, CStr(data.rows));
  }
  SwitchControls(context, slot);
  if (showing == Showing::kWindow) context.windows.ShowWindow(slot);
}

void SwitchOperandControls(Context& context, Slot operand, bool created) {
  Panel& panel = context.panel;
  const OperandControls controls = ControlsOf(operand);
  for (const Control& button : {cmdPrint(operand), cmdShow(operand), cmdSave(operand),
                                controls.copyToOther, controls.clear, controls.reset}) {
    panel.SetEnabled(button, created);
  }
  for (const Control& control :
       {controls.create, controls.retrieve, InfoOf(operand).rows, InfoOf(operand).cols}) {
    panel.SetEnabled(control, !created);
  }
}

void SwitchSystemControls(Context& context, bool present) {
  Panel& panel = context.panel;
  EnableButtons(panel, kSlotSystem, present);
  for (const Control& button : {cmdClearSystem, cmdResetSystem, cmdSolve})
    panel.SetEnabled(button, present);
  for (const Control& control : {cmdCreateSystem, cmdRetrieveSystem, txtEquations, txtUnknowns}) {
    panel.SetEnabled(control, !present);
  }
}

void HideResult(Context& context, Slot slot) {
  if (!HasPermanentFrame(slot)) context.panel.SetFrameVisible(slot, false);
  EnableButtons(context.panel, slot, false);
}

void ShowDimensions(Context& context, Slot slot) {
  const SlotData& data = context.workspace.At(slot);
  context.panel.SetText(InfoOf(slot).rows, CStr(data.rows));
  context.panel.SetText(InfoOf(slot).cols, CStr(data.cols));
}

}  // namespace qmx
