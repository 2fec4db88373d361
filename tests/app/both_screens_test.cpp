// SPDX-License-Identifier: MIT
// One script of commands against the recording doubles and against the real windows.

#include <QLabel>
#include <QLineEdit>

#include "commands/dispatcher.h"
#include "commands/file_commands.h"
#include "commands/grid_commands.h"
#include "commands/lifecycle.h"
#include "commands/parameters.h"
#include "support/core_walk.h"
#include "support/desktop_bench.h"

namespace qmx::test {
namespace {

/// Hands on to the real windows whatever it is asked; dialogs alone are answered by the script.
class TeeScreen : public RecordingScreen {
 public:
  explicit TeeScreen(DesktopScreen& real) : real_(real) {}

  std::string Text(const Control& control) const override {
    EXPECT_EQ(real_.Text(control), RecordingScreen::Text(control)) << control.ObjectName();
    return RecordingScreen::Text(control);
  }
  void SetText(const Control& control, const std::string& text) override {
    RecordingScreen::SetText(control, text);
    real_.SetText(control, text);
  }
  void SetEnabled(const Control& control, bool enable) override {
    RecordingScreen::SetEnabled(control, enable);
    real_.SetEnabled(control, enable);
  }
  bool IsEnabled(const Control& control) const override {
    EXPECT_EQ(real_.IsEnabled(control), RecordingScreen::IsEnabled(control))
        << control.ObjectName();
    return RecordingScreen::IsEnabled(control);
  }
  bool IsSelected(const Control& control) const override {
    EXPECT_EQ(real_.IsSelected(control), RecordingScreen::IsSelected(control))
        << control.ObjectName();
    return RecordingScreen::IsSelected(control);
  }
  void Select(const Control& option) override {
    RecordingScreen::Select(option);
    real_.Select(option);
  }
  void SetFrameVisible(Slot slot, bool visible) override {
    RecordingScreen::SetFrameVisible(slot, visible);
    real_.SetFrameVisible(slot, visible);
  }
  void Show(Slot slot, const GridContent& content) override {
    RecordingScreen::Show(slot, content);
    real_.Show(slot, content);
  }
  void Write(Slot slot, int row, int col, TextBlock&& block) override {
    real_.Write(slot, row, col, TextBlock(block));
    RecordingScreen::Write(slot, row, col, std::move(block));
  }
  void SetWide(Slot slot, bool isWide) override {
    RecordingScreen::SetWide(slot, isWide);
    real_.SetWide(slot, isWide);
  }
  void ShowWindow(Slot slot) override {
    RecordingScreen::ShowWindow(slot);
    real_.ShowWindow(slot);
  }
  void RestoreWindow(Slot slot) override {
    RecordingScreen::RestoreWindow(slot);
    real_.RestoreWindow(slot);
  }
  void CloseWindow(Slot slot) override {
    RecordingScreen::CloseWindow(slot);
    real_.CloseWindow(slot);
  }
  void HideEntryBox(Slot slot) override {
    RecordingScreen::HideEntryBox(slot);
    real_.HideEntryBox(slot);
  }
  void Append(const std::vector<std::string>& added) override {
    RecordingScreen::Append(added);
    real_.Append(added);
  }
  void ShowResults() override {
    RecordingScreen::ShowResults();
    real_.ShowResults();
  }
  void Run(const Computation& computation, const std::string& called) override {
    real_.Run([&](Progress&) { RecordingScreen::Run(computation, called); }, called);
  }

  /// Both states in one: each is brought back where it came from.
  struct Both : ViewState {
    std::shared_ptr<const ViewState> recorded;
    std::shared_ptr<const ViewState> real;
  };
  std::shared_ptr<const ViewState> Capture() const override {
    auto both = std::make_shared<Both>();
    both->recorded = RecordingScreen::Capture();
    both->real = real_.Capture();
    return both;
  }
  void Restore(const ViewState& state, Restoring restoring) override {
    const auto& both = static_cast<const Both&>(state);
    RecordingScreen::Restore(*both.recorded, restoring);
    real_.Restore(*both.real, restoring);
  }
  std::shared_ptr<const ViewState> CaptureGrid(Slot slot) const override {
    auto both = std::make_shared<Both>();
    both->recorded = RecordingScreen::CaptureGrid(slot);
    both->real = real_.CaptureGrid(slot);
    return both;
  }
  void RestoreGrid(Slot slot, const ViewState& state) override {
    const auto& both = static_cast<const Both&>(state);
    RecordingScreen::RestoreGrid(slot, *both.recorded);
    real_.RestoreGrid(slot, *both.real);
  }
  /// The double knows only texts; the real grid tells which of them were written.
  std::optional<std::string> WrittenText(Slot slot, int row, int col) const override {
    recordedText_ = RecordingScreen::WrittenText(slot, row, col);
    const auto written = real_.WrittenText(slot, row, col);
    return written ? "w" + *written : "e" + recordedText_.value_or("");
  }
  void RestoreText(Slot slot, int row, int col, const std::optional<std::string>& text) override {
    const bool written = text->front() == 'w';
    RecordingScreen::RestoreText(slot, row, col, text->substr(1));
    real_.RestoreText(slot, row, col, written ? std::optional(text->substr(1)) : std::nullopt);
  }
  void ShowElements(Slot slot, const Matrix& elements) override {
    real_.ShowElements(slot, elements);
  }

 private:
  DesktopScreen& real_;
  mutable std::optional<std::string> recordedText_;
};

class BothScreens : public Desktop, public ::testing::WithParamInterface<int> {
 protected:
  Workspace workspace;
  TeeScreen screen{program.Windows()};
  Context context{workspace, screen, {files, printer, random, clock, memory}};
  bool faulted = false;
  CommandRunner runner{context, [this](Fault) { faulted = true; }};

  void ExpectSameControls() {
    for (const auto& [name, text] : screen.texts) {
      EXPECT_EQ(program.Windows().Text({name}), text) << name;
    }
    for (const auto& [name, on] : screen.enabled) {
      const QObject* control = Main().Find({name});
      if (const auto* widget = qobject_cast<const QWidget*>(control)) {
        EXPECT_EQ(widget->isEnabledTo(widget->parentWidget()), on) << name;
      }
    }
    for (const auto& [name, on] : screen.selected) {
      if (Main().Find({name}) != nullptr) {
        EXPECT_EQ(program.Windows().IsSelected({name}), on) << name;
      }
    }
    for (const qmx::Slot slot : kAllSlots) {
      const auto* frame = qobject_cast<QWidget*>(Main().Find(fraFrame(slot)));
      if (!HasPermanentFrame(slot)) {
        EXPECT_EQ(!frame->isHidden(), screen.frames[slot]) << slot;
      }
    }
  }
  void ExpectSameGrid(qmx::Slot slot) {
    const GridWindow* window = program.Windows().Window(slot);
    EXPECT_EQ(window != nullptr, screen.windows[slot] != WindowState::kNone) << slot;
    if (window == nullptr) return;
    EXPECT_EQ(window->isVisible(), screen.windows[slot] == WindowState::kShown) << slot;
    const RecordedGrid& grid = screen.grids[slot];
    if (grid.cols == 0) return;
    const GridModel& model = window->Grid().Model();
    ASSERT_EQ(model.rowCount(), grid.rows) << slot;
    ASSERT_EQ(model.columnCount(), grid.cols) << slot;
    for (int row = 0; row < grid.rows; ++row) {
      for (int col = 0; col < grid.cols; ++col) {
        EXPECT_EQ(model.Text(row, col).toStdString(), grid.Text(row, col))
            << slot << ": " << row << "," << col;
      }
    }
  }
  void ExpectSame() {
    ExpectSameControls();
    for (const qmx::Slot slot : kAllSlots) ExpectSameGrid(slot);
    const ResultsWindow* results = program.Windows().Results();
    EXPECT_EQ(results == nullptr ? 0U : static_cast<std::size_t>(results->LineCount()),
              screen.lines.size());
  }
};

INSTANTIATE_TEST_SUITE_P(Seeds, BothScreens, ::testing::Range(0, 6));

TEST_P(BothScreens, TellTheSameAfterEveryStep) {
  std::mt19937 any(GetParam());
  SetStartState(context);
  screen.Type(txtRowsA, "2");
  runner.Do([](Context& c) { CreateOperand(c, kSlotA); });
  runner.Paste(kSlotA, 1, 1, "2\t1\n1\t3\n");
  for (const int task : {8, 14, 18})
    runner.Step("task", [task](Context& c) { PressTask(c, task); });
  screen.fileNames = {"p", "matrix", "factors"};
  runner.Do(SaveProjectAs);
  runner.Do([](Context& c) { SaveSlot(c, kSlotA); });
  runner.Do(SaveLU);
  ASSERT_FALSE(faulted);
  for (int i = 0; i < 150 && !HasFailure(); ++i) {
    switch (any() % 6) {
      case 0:
        runner.Undo();
        break;
      case 1:
        runner.Redo();
        break;
      case 2: {
        const auto slot = static_cast<qmx::Slot>(any() % kSlotCount);
        if (screen.Enabled(cmdShow(slot))) runner.Do([slot](Context& c) { ToggleWidth(c, slot); });
        break;
      }
      default:
        TakeRandomStep(runner, workspace, screen, any);
    }
    ExpectSame();
  }
}

}  // namespace
}  // namespace qmx::test
