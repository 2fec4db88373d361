// SPDX-License-Identifier: MIT
#pragma once

#include "workspace/context.h"
#include "workspace/result_table.h"

namespace qmx {

/// Shapes a slot's grid for rows x cols data cells, with the headings that the slot's window has of
/// its own: the right-hand side's over the last column of the System, and the label beside each
/// eigenvalue and unknown.
void SetUpSlotGrid(Context& context, Slot slot, int rows, int cols);

/// Fills a slot's grid with the texts of its array. Where the grid was set up for another shape
/// than the array's, as after a refused task, it is shaped anew first. The eigenvector grid shows
/// the eigenvalues in red in the header row, each above its vector, all else in blue; columns whose
/// eigenvalue has no converged vector keep their text.
void Populate(Context& context, Slot slot);

/// A matrix is there: sets up its grid for its array, switches its controls (A, B and the System:
/// from creating to using; others: their frame and buttons) and sets the flag of its result, for
/// which the last of the result's matrices counts. Exchanges sets up the System's grid as well.
void MarkAvailable(Context& context, Slot slot);
inline void MarkACreated(Context& context) { MarkAvailable(context, kSlotA); }
inline void MarkBCreated(Context& context) { MarkAvailable(context, kSlotB); }
inline void MarkSystemAvailable(Context& context) { MarkAvailable(context, kSlotSystem); }

/// A matrix as it is to be published. Its counts are those of the array unless told otherwise.
struct Publication {
  explicit Publication(Matrix matrix)
      : array(std::move(matrix)), rows(array.Rows()), cols(array.Cols()) {}
  Publication(Matrix matrix, int rowCount, int colCount)
      : array(std::move(matrix)), rows(rowCount), cols(colCount) {}

  Matrix array;
  int rows;
  int cols;
};

enum class Showing {
  kWindow,    ///< With its window; a vector's label tells its length alone.
  kInPlace,   ///< The window stays as it is.
  kFromFile,  ///< The same, and labels tell the counts as the file has them.
};

/// A finished matrix goes on show: array and counts are stored, its fields or labels, grid and
/// controls follow, then its window is shown. Its result's flag is set.
void Publish(Context& context, Slot slot, Publication matrix, Showing showing = Showing::kWindow);

/// Switches A's (B's) controls between creating and using.
void SwitchOperandControls(Context& context, Slot operand, bool created);
/// Switches the System's controls between creating and solving.
void SwitchSystemControls(Context& context, bool present);
/// Takes a result off the main window: hides its frame and disables its buttons.
void HideResult(Context& context, Slot slot);

/// Writes a slot's counts into its fields or labels.
void ShowDimensions(Context& context, Slot slot);

}  // namespace qmx
