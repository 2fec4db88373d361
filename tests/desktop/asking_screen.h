#pragma once

#include <vector>

#include "workspace/screen.h"

namespace qmx {

/// A screen with nothing on it that keeps the messages shown and gives one answer to all of them.
class AskingScreen : public Screen {
 public:
  explicit AskingScreen(Answer answer) : answer_(answer) {}

  std::vector<Message> messages;

  Answer ShowMessage(const Message& message) override {
    messages.push_back(message);
    return answer_;
  }

  std::string Text(const Control&) const override { return {}; }
  void SetText(const Control&, const std::string&) override {}
  void SetEnabled(const Control&, bool) override {}
  bool IsSelected(const Control&) const override { return false; }
  void Select(const Control&) override {}
  void SetFrameVisible(int, bool) override {}
  void SetUpGrid(int, int, int, bool) override {}
  void PopulateGrid(int, const Matrix&, bool) override {}
  void PopulateGridColumns(int, const Matrix&, bool, const std::vector<bool>&) override {}
  void SetCellText(int, int, int, const std::string&) override {}
  void SetCellColour(int, int, int, Colour) override {}
  void SetGridColour(int, Colour) override {}
  void SetGridWidth(int, bool) override {}
  void ShowWindow(int) override {}
  void RestoreWindow(int) override {}
  void CloseWindow(int) override {}
  void HideEntryBox(int) override {}
  void BringMainToFront() override {}
  void UseResultsFont() override {}
  void AddResultLine(const std::string&) override {}
  void ClearResults() override {}
  void ShowResults() override {}
  void Beep() override {}
  void LetWindowsPaint() override {}
  void BeginWork() override {}
  void ReportProgress(double) override {}
  void EndWork() override {}
  std::string AskOpenFile(const std::string&) override { return {}; }
  std::string AskSaveFile() override { return {}; }

 private:
  Answer answer_;
};

}  // namespace qmx
