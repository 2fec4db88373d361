#pragma once

#include "workspace/context.h"

namespace qmx {

/// Shapes a slot's grid for rows x cols data cells at the slot's present width, with the headings
/// that the slot's window has of its own: the right-hand side's over the last column of the System,
/// and the label beside each eigenvalue and unknown.
void SetUpSlotGrid(Context& context, int slot, int rows, int cols);

/// Fills a slot's grid with the texts of its array. Where the grid was set up for another shape
/// than the array's, as after a refused task, it is shaped anew first.
void Populate(Context& context, int slot);

/// The eigenvector grid: eigenvalues in red in the header row, each above its vector, all else in
/// blue. Columns whose eigenvalue has no converged vector keep their text.
void PopulateEigenvectors(Context& context);

/// A result is there: sets up its grid for its array, sets its present flag, shows its frame and
/// enables its buttons. Created shows no frame, its frame being always there; Exchanges sets up the
/// System's grid as well.
void MarkAvailable(Context& context, int slot);

/// A (B) is there: sets up its grid and switches its controls from creating to using.
void MarkACreated(Context& context);
void MarkBCreated(Context& context);

/// The System is there: sets up its grid and switches its controls from creating to solving.
void MarkSystemAvailable(Context& context);

/// Switches A's (B's) controls between creating and using.
void SwitchOperandControls(Context& context, int operand, bool created);
/// Switches the System's controls between creating and solving.
void SwitchSystemControls(Context& context, bool present);
/// Takes a result off the main window: hides its frame and disables its buttons.
void HideResult(Context& context, int slot);

/// Writes a slot's counts into its fields or labels.
void ShowDimensions(Context& context, int slot);

}  // namespace qmx
