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
    const std::string fraction = shown_.fraction ? shown_.fraction(row, col) : std::string();
    if (!fraction.empty()) {
      text += fraction;
    } else if (const double* element = Find(row, col)) {
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

/// Where a block goes that a matrix has no room for.
std::string PasteAsHint(Slot slot, const TextBlock& block) {
  return " Edit > Paste as " + std::string(slot == kSlotB ? "B" : "A") + " makes a matrix of " +
         RowsAndColumns(block.rows, block.cols) + " of it.";
}

/// True if the numbers of a text fit into memory: the shortest ones take two bytes of it and about
/// twenty times as much while they are read.
bool HasRoomForNumbers(const Memory& memory, std::string_view text) {
  return text.size() <= memory.Available() / 20;
}

void RefusePaste(Context& context, const std::string& problem, const std::string& hint = {}) {
  context.dialogs.ShowMessage(
      {"The block cannot be pasted: " + problem + "\n\nNothing was changed." + hint,
       Icon::kCritical});
}

/// Reads a block of numbers; nothing after a message where the text is none.
std::optional<NumberBlock> ReadBlock(Context& context, std::string_view text) {
  if (!HasRoomForNumbers(context.memory, text)) {
    context.dialogs.ShowMessage(
        {"There is not enough memory to paste so many cells.", Icon::kCritical});
    return std::nullopt;
  }
  NumberBlock block = ReadNumberBlock(text);
  if (block.problem.empty()) return block;
  RefusePaste(context, block.problem);
  return std::nullopt;
}

/// True if the text of so many cells fits into memory, in the forms that it takes on its way to the
/// clipboard.
bool HasRoomForText(const Memory& memory, const CellRange& cells) {
  constexpr std::size_t kBytesPerCell = 5 * 20;
  const std::size_t rows = cells.lastRow - cells.firstRow + 1;
  const std::size_t cols = cells.lastCol - cells.firstCol + 1;
  return rows <= memory.Available() / kBytesPerCell / cols;
}

std::nullopt_t RefuseCopy(Context& context) {
  context.dialogs.ShowMessage(
      {"There is not enough memory to copy so many cells.", Icon::kCritical});
  return std::nullopt;
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
  std::optional<NumberBlock> block = ReadBlock(context, text);
  if (!block) return std::nullopt;
  const std::string problem = RoomProblem(array, slot, row, col, block->texts);
  if (!problem.empty()) {
    RefusePaste(context, problem, PasteAsHint(slot, block->texts));
    return std::nullopt;
  }
  const CellRange range{row, col, row + block->texts.rows - 1, col + block->texts.cols - 1};
  if (before) before(range);
  WriteElements(context, slot, row, col, block->values.data(), std::move(block->texts));
  return range;
}

void PasteAs(Context& context, Slot operand, std::string_view text) {
  if (text.find_first_not_of(" \t\r\n") == std::string_view::npos) {
    context.dialogs.ShowMessage(
        {"There are no numbers in the clipboard that could be pasted.", Icon::kCritical});
    return;
  }
  const std::optional<NumberBlock> block = ReadBlock(context, text);
  if (!block) return;
  Matrix values = Matrix::Unset(block->texts.rows, block->texts.cols);
  std::copy(block->values.begin(), block->values.end(), values.Data());
  context.windows.HideEntryBox(operand);
  Publish(context, operand, Publication(std::move(values)));
  context.windows.BringMainToFront();
}

std::optional<std::string> CopyBlock(Context& context, Slot slot, const CellRange& cells,
                                     const ShownCells& shown, bool headers) {
  if (!HasRoomForText(context.memory, cells)) return RefuseCopy(context);
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

std::optional<std::string> CopyBlockAs(Context& context, Slot slot, const CellRange& cells,
                                       CopyForm form, const FractionOf& fraction) {
  const Matrix& array = context.workspace.At(slot).array;
  if (!array.Contains(cells.firstRow, cells.firstCol) ||
      !array.Contains(cells.lastRow, cells.lastCol))
    return std::nullopt;
  if (!HasRoomForText(context.memory, cells)) return RefuseCopy(context);
  const int cols = cells.lastCol - cells.firstCol + 1;
  FractionOf inBlock;
  if (fraction) {
    inBlock = [&](int row, int col) {
      return fraction(cells.firstRow + row - 1, cells.firstCol + col - 1);
    };
  }
  std::string text;
  context.work.Run([&](Progress& progress) {
    Matrix block = Matrix::Unset(cells.lastRow - cells.firstRow + 1, cols);
    for (int i = 1; i <= block.Rows(); ++i) {
      const double* from = array.Row(cells.firstRow + i - 1) + cells.firstCol - 1;
      std::copy_n(from, cols, block.Row(i));
    }
    progress.Report(0);
    text = CopyText(block, form, inBlock);
    progress.Report(1);
  });
  return text;
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
