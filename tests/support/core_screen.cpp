// SPDX-License-Identifier: MIT
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

int RecordingScreen::FirstRow(Slot slot) {
  return InfoOf(slot).kind == WindowKind::kColumnViewer ? 0 : 1;
}

void RecordingScreen::Touch(Slot slot) {
  if (windows[slot] == WindowState::kNone) windows[slot] = WindowState::kHidden;
}

void RecordingScreen::SetUp(Slot slot, const GridContent& content) {
  RecordedGrid& grid = grids[slot];
  const int firstRow = FirstRow(slot);
  grid.rows = content.rows + firstRow;
  grid.cols = content.cols + 1;
  grid.wide = wide[slot];
  std::erase_if(grid.texts, [&](const auto& cell) {
    return cell.first.first >= grid.rows || cell.first.second >= grid.cols;
  });
  if (firstRow == 1) {
    for (int i = 1; i <= content.rows; ++i) grid.texts[{i, 0}] = CStr(i);
    for (int j = 1; j <= content.cols; ++j) grid.texts[{0, j}] = CStr(j);
  }
  for (const auto& heading : content.headings)
    grid.texts[{heading.row, heading.col}] = heading.text;
}

void RecordingScreen::Fill(Slot slot, const GridContent& content) {
  RecordedGrid& grid = grids[slot];
  const Matrix& values = *content.elements;
  for (int i = 1; i <= values.Rows(); ++i) {
    for (int j = 1; j <= values.Cols(); ++j) {
      const int row = i - 1 + FirstRow(slot);
      const bool takes = content.columns.empty() || content.columns[j - 1];
      if (!takes || row >= grid.rows || j >= grid.cols) continue;
      grid.texts[{row, j}] = CellText(values(i, j), wide[slot]);
    }
  }
}

void RecordingScreen::Show(Slot slot, const GridContent& content) {
  Touch(slot);
  RecordedGrid& grid = grids[slot];
  const bool fits = grid.rows == content.rows + FirstRow(slot) && grid.cols == content.cols + 1;
  if (content.anew || !fits) SetUp(slot, content);
  for (const auto& cell : content.colours) grid.colours[{cell.row, cell.col}] = cell.colour;
  if (content.colour) grid.colour = content.colour;
  for (const auto& cell : content.texts) grid.texts[{cell.row, cell.col}] = cell.text;
  if (content.elements != nullptr) Fill(slot, content);
}

void RecordingScreen::Write(Slot slot, int row, int col, TextBlock&& block) {
  Touch(slot);
  for (int i = 0; i < block.rows; ++i) {
    for (int j = 0; j < block.cols; ++j)
      grids[slot].texts[{row + i, col + j}] = std::string(block.At(i, j));
  }
}

void RecordingScreen::SetWide(Slot slot, bool isWide) {
  Touch(slot);
  wide[slot] = isWide;
  grids[slot].wide = isWide;
}

void RecordingScreen::Run(const Computation& computation, const std::string& called) {
  doing = called;
  class Recorder : public Progress {
   public:
    explicit Recorder(RecordingScreen& screen) : screen_(screen) { ++screen_.workDepth; }
    ~Recorder() override { --screen_.workDepth; }
    void Report(double fraction) override {
      screen_.progress.push_back(fraction);
      if (screen_.stopAt > 0 && --screen_.stopAt == 0) throw Stopped();
    }

   private:
    RecordingScreen& screen_;
  };
  Recorder recorder(*this);
  computation(recorder);
}

namespace {

struct ScreenPicture : ViewState {
  std::map<std::string, std::string> texts;
  std::map<std::string, bool> enabled;
  std::map<std::string, bool> selected;
  std::array<bool, kSlotCount> frames{};
  std::array<RecordedGrid, kSlotCount> grids;
  std::array<WindowState, kSlotCount> windows{};
  std::array<bool, kSlotCount> wide{};
  std::size_t lines = 0;
  bool resultsShown = false;
};

struct GridPicture : ViewState {
  RecordedGrid grid;
};

}  // namespace

std::shared_ptr<const ViewState> RecordingScreen::Capture() const {
  auto state = std::make_shared<ScreenPicture>();
  state->texts = texts;
  state->enabled = enabled;
  state->selected = selected;
  state->frames = frames;
  state->grids = grids;
  state->windows = windows;
  state->wide = wide;
  state->lines = lines.size();
  state->resultsShown = resultsShown;
  return state;
}

void RecordingScreen::Restore(const ViewState& state, Restoring restoring) {
  const auto& wanted = static_cast<const ScreenPicture&>(state);
  texts = wanted.texts;
  enabled = wanted.enabled;
  selected = wanted.selected;
  frames = wanted.frames;
  grids = wanted.grids;
  wide = wanted.wide;
  for (const Slot slot : kAllSlots) {
    const bool stays = windows[slot] != WindowState::kNone &&
                       wanted.windows[slot] != WindowState::kNone &&
                       restoring == Restoring::kContents;
    if (!stays) windows[slot] = wanted.windows[slot];
  }
  if (restoring == Restoring::kContents) return;
  lines.resize(wanted.lines);
  resultsShown = wanted.resultsShown;
}

std::shared_ptr<const ViewState> RecordingScreen::CaptureGrid(Slot slot) const {
  auto state = std::make_shared<GridPicture>();
  state->grid = grids[slot];
  return state;
}

void RecordingScreen::RestoreGrid(Slot slot, const ViewState& state) {
  grids[slot] = static_cast<const GridPicture&>(state).grid;
}

std::optional<std::string> RecordingScreen::WrittenText(Slot slot, int row, int col) const {
  const auto found = grids[slot].texts.find({row, col});
  return found == grids[slot].texts.end() ? std::nullopt : std::optional(found->second);
}

void RecordingScreen::RestoreText(Slot slot, int row, int col,
                                  const std::optional<std::string>& text) {
  if (text) {
    grids[slot].texts[{row, col}] = *text;
  } else {
    grids[slot].texts.erase({row, col});
  }
}

void RecordingScreen::CloseWindow(Slot slot) {
  windows[slot] = WindowState::kNone;
  grids[slot] = RecordedGrid();
  entryBoxes[slot] = false;
}

void RecordingScreen::HideEntryBox(Slot slot) {
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

std::string RecordingScreen::AskOpenFile(const std::string& name, std::string_view ending) {
  ++openDialogs;
  proposedName = name;
  openEnding = ending;
  return NextFileName();
}

std::string RecordingScreen::AskSaveFile(std::string_view /*ending*/) {
  ++saveDialogs;
  return NextFileName();
}

bool RecordingScreen::MayReplace(const std::string& name) {
  replaced.push_back(name);
  return mayReplace;
}

}  // namespace qmx::test
