// SPDX-License-Identifier: MIT
#pragma once

#include <QTimer>
#include <array>
#include <functional>
#include <memory>
#include <optional>

#include "app/desktop_work.h"
#include "app/frm_qmx.h"
#include "app/window_memory.h"
#include "commands/command_runner.h"
#include "grids/grid_window.h"
#include "grids/results_window.h"
#include "workspace/context.h"

namespace qmx {

/// The real windows: the main window, one window per matrix and the results list.
class DesktopScreen : public Panel,
                      public Grids,
                      public Windows,
                      public Log,
                      public Work,
                      public Dialogs,
                      public View {
 public:
  /// `commands` is what the windows run their commands by; it may still be under construction.
  DesktopScreen(frmQMX& mainWindow, CommandRunner& commands);
  DesktopScreen(const DesktopScreen&) = delete;
  DesktopScreen& operator=(const DesktopScreen&) = delete;
  ~DesktopScreen() override;

  std::string Text(const Control& control) const override;
  void SetText(const Control& control, const std::string& text) override;
  void SetEnabled(const Control& control, bool enabled) override;
  bool IsEnabled(const Control& control) const override;
  bool IsSelected(const Control& control) const override;
  void Select(const Control& option) override;
  void SetFrameVisible(Slot slot, bool visible) override;

  void Show(Slot slot, const GridContent& content) override;
  void Write(Slot slot, int row, int col, TextBlock&& texts) override;
  bool IsWide(Slot slot) const override { return wide_[slot]; }
  void SetWide(Slot slot, bool wide) override;

  void ShowWindow(Slot slot) override;
  void RestoreWindow(Slot slot) override;
  void CloseWindow(Slot slot) override;
  void HideEntryBox(Slot slot) override;
  void BringMainToFront() override;
  void LetWindowsPaint() override;

  void Append(const std::vector<std::string>& lines) override;
  void ShowResults() override;
  void Beep() override;

  using Work::Run;
  void Run(const Computation& computation, const std::string& doing) override {
    if (giveWay_) giveWay_();
    work_.Run(computation, doing);
  }

  Answer ShowMessage(const Message& message) override;
  std::string AskOpenFile(const std::string& name, std::string_view ending) override;
  std::string AskSaveFile(std::string_view ending) override;
  bool MayReplace(const std::string& name) override;

  std::shared_ptr<const ViewState> Capture() const override;
  void Restore(const ViewState& state, Restoring restoring) override;
  std::shared_ptr<const ViewState> CaptureGrid(Slot slot) const override;
  void RestoreGrid(Slot slot, const ViewState& state) override;
  std::optional<std::string> WrittenText(Slot slot, int row, int col) const override;
  void RestoreText(Slot slot, int row, int col, const std::optional<std::string>& text) override;
  void ShowElements(Slot slot, const Matrix& elements) override;
  void SetStatus(const std::string& text) override;

  /// Gives a window that has not been on the screen a place where it is seen.
  void PlaceIfNew(QWidget& window, std::optional<Slot> slot);
  /// Whoever adds something to all windows is told of each that is made.
  void WhenMade(std::function<void(QWidget& window)> told) { whenMade_ = std::move(told); }
  /// The window of a slot; null while there is none.
  GridWindow* Window(Slot slot) const { return windows_[slot].get(); }
  /// From now on the windows of results tell how many digits hold; `ask` is told where the user
  /// wants them to be checked, or wants that no longer, and `giveWay` before every computation.
  void WatchDigits(std::function<void(Slot, bool)> ask, std::function<void()> giveWay);
  /// The results window; null while there is none.
  ResultsWindow* Results() const { return results_.get(); }
  /// All windows but the main one that are on the screen.
  std::vector<QWidget*> ShownWindows() const;
  /// Is told of files that are dropped on editors.
  using DropHandler = std::function<void(Slot slot, const QString& name)>;
  void SetDropHandler(DropHandler handler) { onDrop_ = std::move(handler); }
  /// Those of them that are not minimised.
  std::vector<QWidget*> OpenWindows() const;
  /// Shows the main window, not minimised, in front of the others and gives it the keyboard.
  void ActivateMain();
  /// Lays the windows side by side, or one upon the other: beside the main window if there is room
  /// enough, else over all of the screen.
  void TileWindows();
  void CascadeWindows();
  /// Brings the windows of all results in front of the others.
  void BringResultsToFront();
  /// Gives the keyboard to the next window, or to the one before.
  void GoToWindow(bool next);
  /// Closes the window that has the keyboard as its close box does; nothing for the main window.
  void CloseActiveWindow();
  WindowMemory& Memory() { return memory_; }
  /// Shows the latest result on the main window; to be called after every command.
  void ShowLatest();
  /// Unloads all windows but the main one.
  void CloseAllWindows();

 private:
  void TellMade(QWidget& window) const {
    if (whenMade_) whenMade_(window);
  }
  GridWindow& Ensure(Slot slot);
  ResultsWindow& EnsureResults();
  /// The latest result is no longer this one.
  void ForgetLatest(Slot slot);
  /// Where the window is that a new one belongs to; nothing where that is the main window.
  std::optional<QRect> OwnerOf(std::optional<Slot> slot) const;
  void Arrange(const std::vector<QWidget*>& windows, const QList<QRect>& places);
  QRect AreaFor(int windows) const;
  void ExpectDigits(GridWindow& window);
  void SetObjectEnabled(QObject* control, bool enabled);
  /// The window that boxes and dialogs belong to.
  QWidget& FrontWindow() const;
  void KeepFocusNear(const QWidget& disabled);
  void MoveFocus();

  frmQMX& main_;
  CommandRunner& commands_;
  DesktopWork work_;
  std::array<std::unique_ptr<GridWindow>, kSlotCount> windows_;
  std::array<bool, kSlotCount> wide_{};  ///< Outlives the windows.
  std::unique_ptr<ResultsWindow> results_;
  std::function<void(QWidget& window)> whenMade_;
  DropHandler onDrop_;
  /// The results, the latest one first; of those that one command publishes the first one counts.
  QList<Slot> latest_;
  qsizetype publishedNow_ = 0;  ///< By the command that is under way.
  WindowMemory memory_;
  QList<const QObject*> shownInTurn_;  ///< The windows, that which was shown last at the end.
  const QWidget* stranded_ = nullptr;  ///< The frame whose control was disabled under the focus.
  QTimer focusMover_;                  ///< Moves the focus when the command is done.
  std::function<void(Slot, bool)> askDigits_;
  std::function<void()> giveWay_;
  bool awaitsTyping_ = false;  ///< A window was opened to be typed into: it keeps the keyboard.
};

}  // namespace qmx
