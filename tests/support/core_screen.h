// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "workspace/context.h"

namespace qmx::test {

/// What a grid shows, cell by cell; row 0 and column 0 are its headers.
struct RecordedGrid {
  int rows = 0;
  int cols = 0;
  bool wide = false;
  std::map<std::pair<int, int>, std::string> texts;
  std::map<std::pair<int, int>, Colour> colours;
  std::optional<Colour> colour;

  std::string Text(int row, int col) const;
};

enum class WindowState { kNone, kHidden, kShown };

/// All ports to the windows: remembers what it was asked and answers from a script.
class RecordingScreen : public Panel,
                        public Grids,
                        public Windows,
                        public Log,
                        public Work,
                        public Dialogs,
                        public View {
 public:
  // What is on the screen.
  std::map<std::string, std::string> texts;
  std::map<std::string, bool> enabled;
  std::map<std::string, bool> selected;
  std::array<bool, kSlotCount> frames{};
  std::array<RecordedGrid, kSlotCount> grids;
  std::array<WindowState, kSlotCount> windows{};
  std::array<bool, kSlotCount> entryBoxes{};
  std::vector<std::string> lines;
  std::array<bool, kSlotCount> wide{};
  bool resultsShown = false;
  int beeps = 0;
  int timesBroughtToFront = 0;
  std::string status;
  int workDepth = 0;
  std::vector<double> progress;
  std::string doing;  ///< What ran last, as it was called.
  std::vector<Message> messages;
  int openDialogs = 0;
  int saveDialogs = 0;
  std::string proposedName;
  std::string openEnding;             ///< Of the last dialog for opening.
  std::vector<std::string> replaced;  ///< The names that were asked about.

  // The script.
  std::deque<Answer> answers;
  std::deque<std::string> fileNames;
  bool mayReplace = true;
  /// The number of the progress report, of all computations, at which the user stops; 0 for never.
  int stopAt = 0;

  RecordingScreen() = default;
  RecordingScreen(const RecordingScreen&) = delete;
  RecordingScreen& operator=(const RecordingScreen&) = delete;

  bool Enabled(const Control& control) const;
  std::string LastMessage() const {
    return messages.empty() ? std::string() : messages.back().text;
  }
  /// Types into a field, with what follows in the window left out.
  void Type(const Control& field, const std::string& text) { texts[field.ObjectName()] = text; }
  void Check(const Control& box, bool checked) { selected[box.ObjectName()] = checked; }

  std::string Text(const Control& control) const override;
  void SetText(const Control& control, const std::string& text) override;
  void SetEnabled(const Control& control, bool enable) override;
  bool IsEnabled(const Control& control) const override { return Enabled(control); }
  bool IsSelected(const Control& control) const override;
  void Select(const Control& option) override;
  void SetFrameVisible(Slot slot, bool visible) override { frames[slot] = visible; }

  void Show(Slot slot, const GridContent& content) override;
  void Write(Slot slot, int row, int col, TextBlock&& block) override;
  bool IsWide(Slot slot) const override { return wide[slot]; }
  void SetWide(Slot slot, bool isWide) override;

  void ShowWindow(Slot slot) override { windows[slot] = WindowState::kShown; }
  void RestoreWindow(Slot slot) override { windows[slot] = WindowState::kShown; }
  void CloseWindow(Slot slot) override;
  void HideEntryBox(Slot slot) override;
  void BringMainToFront() override { ++timesBroughtToFront; }
  void LetWindowsPaint() override {}

  void Append(const std::vector<std::string>& added) override {
    lines.insert(lines.end(), added.begin(), added.end());
  }
  void ShowResults() override { resultsShown = true; }
  void Beep() override { ++beeps; }

  using Work::Run;
  void Run(const Computation& computation, const std::string& doing) override;

  std::shared_ptr<const ViewState> Capture() const override;
  void Restore(const ViewState& state, Restoring restoring) override;
  std::shared_ptr<const ViewState> CaptureGrid(Slot slot) const override;
  void RestoreGrid(Slot slot, const ViewState& state) override;
  std::optional<std::string> WrittenText(Slot slot, int row, int col) const override;
  void RestoreText(Slot slot, int row, int col, const std::optional<std::string>& text) override;
  /// The texts of all cells are kept, so that there is nothing below them.
  void ShowElements(Slot, const Matrix&) override {}
  void SetStatus(const std::string& text) override { status = text; }

  Answer ShowMessage(const Message& message) override;
  std::string AskOpenFile(const std::string& name, std::string_view ending) override;
  std::string AskSaveFile(std::string_view ending) override;
  bool MayReplace(const std::string& name) override;

 private:
  /// The first row and column of data in a slot's grid.
  static int FirstRow(Slot slot);
  void Touch(Slot slot);
  void SetUp(Slot slot, const GridContent& content);
  void Fill(Slot slot, const GridContent& content);
  std::string NextFileName();
};

}  // namespace qmx::test
