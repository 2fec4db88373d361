// SPDX-License-Identifier: MIT
#include "commands/grid_commands.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/number_text.h"
#include "commands/block_text.h"
#include "workspace/availability.h"
#include "workspace/known_eigenvalues.h"
#include "workspace/staleness.h"

namespace qmx {
namespace {

std::string CellName(Slot slot, int row, int col) {
  return std::string(InfoOf(slot).prefix) + CStr(row) + "," + CStr(col) + ")";
}

std::string RowsAndColumns(int rows, int cols) {
  return CStr(rows) + (rows == 1 ? " row and " : " rows and ") + CStr(cols) +
         (cols == 1 ? " column" : " columns");
}

/// Why a block of this shape does not fit into a matrix from a cell on; empty where it does.
std::string RoomProblem(const Matrix& array, Slot slot, int row, int col, const TextBlock& block) {
  const int rows = std::max(array.Rows() - row + 1, 0);
  const int cols = std::max(array.Cols() - col + 1, 0);
  if (block.rows <= rows && block.cols <= cols) return {};
  return "it has " + RowsAndColumns(block.rows, block.cols) + ", but from " +
         CellName(slot, row, col) + " on there is room for " + RowsAndColumns(rows, cols) + ".";
}

/// Writes the elements of one slot's cells, each as its grid shows it but with all digits.
class CellWriter {
 public:
  CellWriter(const Workspace& workspace, Slot slot, const ShownCells& shown)
      : workspace_(workspace), slot_(slot), array_(workspace.At(slot).array), shown_(shown) {}

  void Append(int row, int col) {
    if (const double* element = Find(row, col)) {
      std::array<char, kFileNumberRoom> room;
      text.append(room.data(), WriteClipboardNumber(room.data(), *element));
    } else {
      text += shown_.text(row, col);
    }
  }

  std::string text;

 private:
  /// The element that a cell shows; null where it shows none.
  const double* Find(int row, int col) const {
    const bool eigenvectors = slot_ == kSlotEigenvectors;
    if (eigenvectors && col > KnownEigenvalues(workspace_)) return nullptr;
    if (eigenvectors && row == 0 && col > 0) return FindIn(EigenvalueArray(), col, 1);
    if (eigenvectors && col > 0 && workspace_.eigen.VectorStatus[col - 1] != 0) return nullptr;
    const double* element = FindIn(array_, row, col);
    return element == nullptr || shown_.isEmpty(row, col) ? nullptr : element;
  }
  const Matrix& EigenvalueArray() const { return workspace_.At(kSlotEigenvalues).array; }
  static const double* FindIn(const Matrix& matrix, int row, int col) {
    return matrix.Contains(row, col) ? matrix.Row(row) + col - 1 : nullptr;
  }

  const Workspace& workspace_;
  Slot slot_;
  const Matrix& array_;
  const ShownCells& shown_;
};

/// True if the numbers of a text fit into memory: the shortest ones take two bytes of it and about
/// twenty times as much while they are read.
bool HasRoomForNumbers(const Memory& memory, std::string_view text) {
  return text.size() <= memory.Available() / 20;
}

/// True if the text of so many cells fits into memory, in the forms that it takes on its way to the
/// clipboard.
bool HasRoomForText(const Memory& memory, const CellRange& cells) {
  constexpr std::size_t kBytesPerCell = 5 * 20;
  const std::size_t rows = cells.lastRow - cells.firstRow + 1;
  const std::size_t cols = cells.lastCol - cells.firstCol + 1;
  return rows <= memory.Available() / kBytesPerCell / cols;
}

/// The one way in which elements of an editor's matrix are written: a block of them from (row, col)
/// on, and the texts that their cells show.
void WriteElements(Context& context, Slot slot, int row, int col, const double* values,
                   TextBlock&& texts) {
  Matrix& array = context.workspace.At(slot).array;
  const int rows = texts.rows;
  const int cols = texts.cols;
  array.MakeOwn();
  context.grids.Write(slot, row, col, std::move(texts));
  // The elements last: nothing can fail any more.
  NoteChange(context.workspace, slot);
  for (int i = 0; i < rows; ++i) {
    std::copy_n(values + static_cast<std::ptrdiff_t>(i) * cols, cols, array.Row(row + i) + col - 1);
  }
}

}  // namespace

void CommitCell(Context& context, Slot slot, int row, int col, const std::string& text) {
  if (!context.workspace.At(slot).array.Contains(row, col)) return;
  TextBlock texts{1, 1, {}, {}};
  texts.Append(text);
  const double value = Val(text);
  WriteElements(context, slot, row, col, &value, std::move(texts));
}

std::optional<CellRange> PasteBlock(Context& context, Slot slot, int row, int col,
                                    std::string_view text, const BeforePaste& before) {
  const Matrix& array = context.workspace.At(slot).array;
  if (!array.Contains(row, col)) return std::nullopt;
  if (!HasRoomForNumbers(context.memory, text)) {
    context.dialogs.ShowMessage(
        {"There is not enough memory to paste so many cells.", Icon::kCritical});
    return std::nullopt;
  }
  NumberBlock block = ReadNumberBlock(text);
  std::string problem = std::move(block.problem);
  if (problem.empty()) problem = RoomProblem(array, slot, row, col, block.texts);
  if (!problem.empty()) {
    context.dialogs.ShowMessage(
        {"The block cannot be pasted: " + problem + "\n\nNothing was changed.", Icon::kCritical});
    return std::nullopt;
  }
  const CellRange range{row, col, row + block.texts.rows - 1, col + block.texts.cols - 1};
  if (before) before(range);
  WriteElements(context, slot, row, col, block.values.data(), std::move(block.texts));
  return range;
}

std::optional<std::string> CopyBlock(Context& context, Slot slot, const CellRange& cells,
                                     const ShownCells& shown, bool headers) {
  if (!HasRoomForText(context.memory, cells)) {
    context.dialogs.ShowMessage(
        {"There is not enough memory to copy so many cells.", Icon::kCritical});
    return std::nullopt;
  }
  CellWriter writer(context.workspace, slot, shown);
  const auto appendRow = [&](int row) {
    if (headers) writer.Append(row, 0);
    if (headers) writer.text += '\t';
    for (int col = cells.firstCol; col <= cells.lastCol; ++col) {
      if (col > cells.firstCol) writer.text += '\t';
      writer.Append(row, col);
    }
    writer.text += '\n';
  };
  if (headers && InfoOf(slot).kind != WindowKind::kColumnViewer) appendRow(0);
  for (int row = cells.firstRow; row <= cells.lastRow; ++row) appendRow(row);
  return std::move(writer.text);
}

std::string CellToolTip(Slot slot, int row, int col, const std::string& text) {
  const SlotInfo& info = InfoOf(slot);
  const std::string prefix = info.IsEditor() ? std::string(info.prefix) : "(";
  return prefix + CStr(row) + "," + CStr(col) + ")=" + text;
}

void ToggleWidth(Context& context, Slot slot) {
  context.grids.SetWide(slot, !context.grids.IsWide(slot));
  Populate(context, slot);
}

void ShowSlot(Context& context, Slot slot) {
  if (slot >= 0 && slot < kSlotCount) context.windows.RestoreWindow(slot);
}

}  // namespace qmx
