#pragma once

#include <QTimer>
#include <array>
#include <memory>

#include "app/frm_qmx.h"
#include "grids/grid_window.h"
#include "grids/results_window.h"
#include "workspace/context.h"

namespace qmx {

/// The real windows: the main window, one window per matrix and the results list.
class DesktopScreen : public Screen {
 public:
  /// `context` is what the windows run their commands with; it may still be under construction.
  DesktopScreen(frmQMX& mainWindow, Context& context);
  ~DesktopScreen() override;

  std::string Text(const Control& control) const override;
  void SetText(const Control& control, const std::string& text) override;
  void SetEnabled(const Control& control, bool enabled) override;
  bool IsSelected(const Control& control) const override;
  void Select(const Control& option) override;
  void SetFrameVisible(int slot, bool visible) override;

  void SetUpGrid(int slot, int rows, int cols, bool wide) override;
  void PopulateGrid(int slot, const Matrix& values, bool wide) override;
  void PopulateGridColumns(int slot, const Matrix& values, bool wide,
                           const std::vector<bool>& columns) override;
  void SetCellText(int slot, int row, int col, const std::string& text) override;
  void SetCellTexts(int slot, int row, int col, TextBlock&& texts) override;
  void SetCellColour(int slot, int row, int col, Colour colour) override;
  void SetGridColour(int slot, Colour colour) override;
  void SetGridWidth(int slot, bool wide) override;

  void ShowWindow(int slot) override;
  void RestoreWindow(int slot) override;
  void CloseWindow(int slot) override;
  void HideEntryBox(int slot) override;
  void BringMainToFront() override;

  void UseResultsFont() override;
  void AddResultLine(const std::string& line) override;
  void ShowResults() override;

  void Beep() override;
  void LetWindowsPaint() override;
  void BeginWork() override;
  void ReportProgress(double fraction) override;
  void EndWork() override;

  Answer ShowMessage(const Message& message) override;
  std::string AskOpenFile(const std::string& name) override;
  std::string AskSaveFile(std::string_view ending) override;

  /// The window of a slot; null while there is none.
  GridWindow* Window(int slot) const { return windows_[slot].get(); }
  /// The results window; null while there is none.
  ResultsWindow* Results() const { return results_.get(); }
  /// All windows but the main one that are on the screen.
  std::vector<QWidget*> ShownWindows() const;
  /// Unloads all windows but the main one.
  void CloseAllWindows();

 private:
  GridWindow& Ensure(int slot);
  ResultsWindow& EnsureResults();
  void PlaceIfNew(QWidget& window);
  void KeepFocusNear(const QWidget& disabled);
  void MoveFocus();

  frmQMX& main_;
  Context& context_;
  std::array<std::unique_ptr<GridWindow>, kSlotCount> windows_;
  std::unique_ptr<ResultsWindow> results_;
  const QWidget* stranded_ = nullptr;  ///< The frame whose control was disabled under the focus.
  QTimer focusMover_;                  ///< Moves the focus when the command is done.
  bool awaitsTyping_ = false;  ///< A window was opened to be typed into: it keeps the keyboard.
};

}  // namespace qmx
