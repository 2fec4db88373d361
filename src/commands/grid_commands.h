#pragma once

#include <string>

#include "workspace/context.h"

namespace qmx {

/// What is typed into cell (row, col) of an editor: the element takes the text's numeric value at
/// once. Nothing outside the matrix.
void CommitCell(Context& context, int slot, int row, int col, const std::string& text);

/// The tool tip of a cell's entry box: "A(2,3)=7" in an editor, "(2,3)=7" in a viewer.
std::string CellToolTip(int slot, int row, int col, const std::string& text);

/// Flips a slot between narrow cells in single precision and wide ones in double precision.
void ToggleWidth(Context& context, int slot);

/// Brings a slot's window back into view. Indices outside 0..18 do nothing.
void ShowSlot(Context& context, int slot);

}  // namespace qmx
