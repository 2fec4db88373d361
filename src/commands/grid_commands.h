// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "exchange/copy_forms.h"
#include "workspace/context.h"

namespace qmx {

/// What is typed into cell (row, col) of an editor: the element takes the text's numeric value at
/// once, the cell the text. Nothing outside the matrix.
void CommitCell(Context& context, Slot slot, int row, int col, const std::string& text);

/// A block of cells of a matrix, rows and columns counted from 1, both ends included.
struct CellRange {
  int firstRow;
  int firstCol;
  int lastRow;
  int lastCol;

  bool operator==(const CellRange&) const = default;
};

/// Pastes a block of numbers into an editor, the first of them into cell (row, col): every element
/// and every cell's text becomes what typing it there would make it. Returns the cells that were
/// written; nothing after a message where the text is no block of numbers or where the matrix has
/// not room for it, and then nothing is changed. `before` is told which cells will be written, once
/// nothing is refused any more.
using BeforePaste = std::function<void(const CellRange& cells)>;
std::optional<CellRange> PasteBlock(Context& context, Slot slot, int row, int col,
                                    std::string_view text, const BeforePaste& before = {});

/// Makes A or B of a block of numbers, in its size; what was there is replaced. Nothing after a
/// message where the text is no block of numbers.
void PasteAs(Context& context, Slot operand, std::string_view text);

/// What a copy asks of a slot's grid: what cell (row, col) shows, counted as in CellRange, with 0
/// for the headers; and whether it shows nothing.
struct ShownCells {
  std::function<std::string(int row, int col)> text;
  std::function<bool(int row, int col)> isEmpty;
  /// The exact fraction that a cell shows in place of its number; empty where it shows none.
  FractionOf fraction = {};
};

/// A block of cells as text for the clipboard: numbers separated by tabs, every row ended by a line
/// feed. An element is written with all its digits, whatever precision the grid shows; a cell that
/// is empty stays empty, and one that shows no element, or a fraction, keeps its text. `headers`
/// adds the header column and, where the grid has one, the header row. Nothing after a message
/// where the text would not fit into memory.
std::optional<std::string> CopyBlock(Context& context, Slot slot, const CellRange& cells,
                                     const ShownCells& shown, bool headers = false);

/// A block of elements as text in a form that another program takes, with all digits; fractions
/// that the cells show stay what they are. Nothing after a message where the text would not fit
/// into memory.
std::optional<std::string> CopyBlockAs(Context& context, Slot slot, const CellRange& cells,
                                       CopyForm form, const FractionOf& fraction = {});

/// The tool tip of a cell's entry box: "A(2,3)=7" in an editor, "(2,3)=7" in a viewer.
std::string CellToolTip(Slot slot, int row, int col, const std::string& text);

/// Flips a slot between narrow cells in single precision and wide ones in double precision.
void ToggleWidth(Context& context, Slot slot);

/// Brings a slot's window back into view. Indices outside 0..18 do nothing.
void ShowSlot(Context& context, Slot slot);

}  // namespace qmx
