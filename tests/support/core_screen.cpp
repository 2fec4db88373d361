#include "support/core_screen.h"

#include "base/number_text.h"

namespace qmx::test {
namespace {

std::string CellText(double value, bool wide) { return wide ? CStr(value) : CStrSingle(value); }

}  // namespace

std::string RecordedGrid::Text(int row, int col) const {
  const auto found = texts.find({row, col});
  return found == texts.end() ? std::string() : found->second;
}

bool RecordingScreen::Enabled(const Control& control) const {
  const auto found = enabled.find(control.ObjectName());
  return found == enabled.end() || found->second;
}

std::string RecordingScreen::Text(const Control& control) const {
  const auto found = texts.find(control.ObjectName());
  return found == texts.end() ? std::string() : found->second;
}

void RecordingScreen::SetText(const Control& control, const std::string& text) {
  texts[control.ObjectName()] = text;
}

void RecordingScreen::SetEnabled(const Control& control, bool enable) {
  enabled[control.ObjectName()] = enable;
}

bool RecordingScreen::IsSelected(const Control& control) const {
  const auto found = selected.find(control.ObjectName());
  return found != selected.end() && found->second;
}

void RecordingScreen::Select(const Control& option) {
  constexpr int kMostOptions = 4;
  for (int i = 0; i < kMostOptions; ++i)
    selected[Control{option.name, i}.ObjectName()] = i == option.index;
}

int RecordingScreen::FirstRow(int slot) {
  return InfoOf(slot).kind == WindowKind::kColumnViewer ? 0 : 1;
}

void RecordingScreen::Touch(int slot) {
  if (windows[slot] == WindowState::kNone) windows[slot] = WindowState::kHidden;
}

void RecordingScreen::SetUpGrid(int slot, int rows, int cols, bool wide) {
  Touch(slot);
  RecordedGrid& grid = grids[slot];
  const int firstRow = FirstRow(slot);
  grid.rows = rows + firstRow;
  grid.cols = cols + 1;
  grid.wide = wide;
  std::erase_if(grid.texts, [&](const auto& cell) {
    return cell.first.first >= grid.rows || cell.first.second >= grid.cols;
  });
  if (firstRow == 0) return;
  for (int i = 1; i <= rows; ++i) grid.texts[{i, 0}] = CStr(i);
  for (int j = 1; j <= cols; ++j) grid.texts[{0, j}] = CStr(j);
}

void RecordingScreen::PopulateGrid(int slot, const Matrix& values, bool wide) {
  PopulateGridColumns(slot, values, wide, std::vector<bool>(values.Cols(), true));
}

void RecordingScreen::PopulateGridColumns(int slot, const Matrix& values, bool wide,
                                          const std::vector<bool>& columns) {
  Touch(slot);
  RecordedGrid& grid = grids[slot];
  const int firstRow = FirstRow(slot);
  for (int i = 1; i <= values.Rows(); ++i) {
    for (int j = 1; j <= values.Cols(); ++j) {
      const int row = i - 1 + firstRow;
      if (!columns[j - 1] || row >= grid.rows || j >= grid.cols) continue;
      grid.texts[{row, j}] = CellText(values(i, j), wide);
    }
  }
}

void RecordingScreen::SetCellText(int slot, int row, int col, const std::string& text) {
  Touch(slot);
  grids[slot].texts[{row, col}] = text;
}

void RecordingScreen::SetCellColour(int slot, int row, int col, Colour colour) {
  Touch(slot);
  grids[slot].colours[{row, col}] = colour;
}

void RecordingScreen::SetGridColour(int slot, Colour colour) {
  Touch(slot);
  grids[slot].colour = colour;
}

void RecordingScreen::SetGridWidth(int slot, bool wide) {
  Touch(slot);
  grids[slot].wide = wide;
}

void RecordingScreen::CloseWindow(int slot) {
  windows[slot] = WindowState::kNone;
  grids[slot] = RecordedGrid();
  entryBoxes[slot] = false;
}

void RecordingScreen::HideEntryBox(int slot) {
  Touch(slot);
  entryBoxes[slot] = false;
}

Answer RecordingScreen::ShowMessage(const Message& message) {
  messages.push_back(message);
  if (message.buttons == Buttons::kOk) return Answer::kOk;
  if (answers.empty()) return Answer::kCancel;
  const Answer answer = answers.front();
  answers.pop_front();
  return answer;
}

std::string RecordingScreen::NextFileName() {
  if (fileNames.empty()) return {};
  std::string name = fileNames.front();
  fileNames.pop_front();
  return name;
}

std::string RecordingScreen::AskOpenFile(const std::string& name) {
  ++openDialogs;
  proposedName = name;
  return NextFileName();
}

std::string RecordingScreen::AskSaveFile(std::string_view /*ending*/) {
  ++saveDialogs;
  return NextFileName();
}

}  // namespace qmx::test
