#pragma once

#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "workspace/screen.h"
#include "workspace/slot_table.h"

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

/// A Screen that remembers what it was asked and answers from a script.
class RecordingScreen : public Screen {
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
  bool resultsShown = false;
  bool resultsFontSet = false;
  int beeps = 0;
  int timesBroughtToFront = 0;
  int workDepth = 0;
  std::vector<double> progress;
  std::vector<Message> messages;
  int openDialogs = 0;
  int saveDialogs = 0;
  std::string proposedName;

  // The script.
  std::deque<Answer> answers;
  std::deque<std::string> fileNames;

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
  bool IsSelected(const Control& control) const override;
  void Select(const Control& option) override;
  void SetFrameVisible(int slot, bool visible) override { frames[slot] = visible; }
  void SetUpGrid(int slot, int rows, int cols, bool wide) override;
  void PopulateGrid(int slot, const Matrix& values, bool wide) override;
  void PopulateGridColumns(int slot, const Matrix& values, bool wide,
                           const std::vector<bool>& columns) override;
  void SetCellText(int slot, int row, int col, const std::string& text) override;
  void SetCellColour(int slot, int row, int col, Colour colour) override;
  void SetGridColour(int slot, Colour colour) override;
  void SetGridWidth(int slot, bool wide) override;
  void ShowWindow(int slot) override { windows[slot] = WindowState::kShown; }
  void RestoreWindow(int slot) override { windows[slot] = WindowState::kShown; }
  void CloseWindow(int slot) override;
  void HideEntryBox(int slot) override;
  void BringMainToFront() override { ++timesBroughtToFront; }
  void UseResultsFont() override { resultsFontSet = true; }
  void AddResultLine(const std::string& line) override { lines.push_back(line); }
  void ShowResults() override { resultsShown = true; }
  void Beep() override { ++beeps; }
  void LetWindowsPaint() override {}
  void BeginWork() override { ++workDepth; }
  void ReportProgress(double fraction) override { progress.push_back(fraction); }
  void EndWork() override { --workDepth; }
  Answer ShowMessage(const Message& message) override;
  std::string AskOpenFile(const std::string& name) override;
  std::string AskSaveFile(std::string_view ending) override;

 private:
  /// The first row and column of data in a slot's grid.
  static int FirstRow(int slot);
  void Touch(int slot);
  std::string NextFileName();
};

}  // namespace qmx::test
