#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/matrix.h"
#include "workspace/controls.h"
#include "workspace/text_block.h"

namespace qmx {

inline constexpr std::string_view kProgramTitle = "Orvane";

enum class Buttons { kOk, kYesNoCancel };
enum class Icon { kNone, kCritical };
enum class Answer { kOk, kYes, kNo, kCancel };
enum class Colour { kRed, kBlue };

/// A modal message box.
struct Message {
  std::string text;
  Icon icon = Icon::kNone;
  Buttons buttons = Buttons::kOk;
  std::string title = std::string(kProgramTitle);
};

/// What commands may ask of the windows. Controls are those of the main window; grids and windows
/// are named by slot. A window that does not exist yet is created, hidden, by whatever refers to
/// it.
class Screen {
 public:
  Screen() = default;
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;
  virtual ~Screen() = default;

  /// Text of a field, or caption of a label.
  virtual std::string Text(const Control& control) const = 0;
  virtual void SetText(const Control& control, const std::string& text) = 0;
  virtual void SetEnabled(const Control& control, bool enabled) = 0;
  /// True if an option or check box is selected.
  virtual bool IsSelected(const Control& control) const = 0;
  /// Selects an option of its group, without running what a click on it would run.
  virtual void Select(const Control& option) = 0;
  virtual void SetFrameVisible(int slot, bool visible) = 0;

  /// Shapes a slot's grid for rows x cols data cells: header numbers (where it has headers) and
  /// column widths are written; cells that were there keep their text, new ones are empty.
  virtual void SetUpGrid(int slot, int rows, int cols, bool wide) = 0;
  /// Writes the text of every element into its cell: full double precision when wide, else single
  /// precision. Cells outside the grid are left out.
  virtual void PopulateGrid(int slot, const Matrix& values, bool wide) = 0;
  /// The same for the columns j with columns[j - 1]; the other cells keep their text.
  virtual void PopulateGridColumns(int slot, const Matrix& values, bool wide,
                                   const std::vector<bool>& columns) = 0;
  /// Writes one cell. Row and column count from 0 and include headers.
  virtual void SetCellText(int slot, int row, int col, const std::string& text) = 0;
  /// Writes a block of cells, the first of them into (row, col).
  virtual void SetCellTexts(int slot, int row, int col, TextBlock&& texts) {
    for (int i = 0; i < texts.rows; ++i) {
      for (int j = 0; j < texts.cols; ++j) {
        SetCellText(slot, row + i, col + j, std::string(texts.At(i, j)));
      }
    }
  }
  virtual void SetCellColour(int slot, int row, int col, Colour colour) = 0;
  /// The colour of all cells that have none of their own.
  virtual void SetGridColour(int slot, Colour colour) = 0;
  /// Gives every data column the default width, or twice it.
  virtual void SetGridWidth(int slot, bool wide) = 0;

  virtual void ShowWindow(int slot) = 0;
  /// Shows a window in its normal, not minimised, state.
  virtual void RestoreWindow(int slot) = 0;
  /// Unloads a window; nothing where there is none.
  virtual void CloseWindow(int slot) = 0;
  /// Hides the cell entry box of an editor or viewer.
  virtual void HideEntryBox(int slot) = 0;
  virtual void BringMainToFront() = 0;

  /// Puts the results list into the fixed-pitch font that its columns need.
  virtual void UseResultsFont() = 0;
  virtual void AddResultLine(const std::string& line) = 0;
  /// Shows the results window in its normal state.
  virtual void ShowResults() = 0;

  virtual void Beep() = 0;
  /// Lets windows that were just shown paint themselves; no key or click is handled meanwhile.
  virtual void LetWindowsPaint() = 0;
  /// A long computation starts and ends: wait cursor and progress bar.
  virtual void BeginWork() = 0;
  virtual void ReportProgress(double fraction) = 0;
  virtual void EndWork() = 0;

  virtual Answer ShowMessage(const Message& message) = 0;
  /// The common file dialog. `name` is what it proposes. Empty when the user cancels.
  virtual std::string AskOpenFile(const std::string& name) = 0;
  /// The same for a file to be written. `ending`, if any, is what the caller appends to a name that
  /// has not got it. Before a file is replaced the user is asked, whichever way its name came
  /// about.
  virtual std::string AskSaveFile(std::string_view ending) = 0;
};

}  // namespace qmx
