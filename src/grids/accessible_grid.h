// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

namespace qmx {

class MatrixGrid;

/// Lets screen readers meet every MatrixGrid as a table of its data cells, rows and columns counted
/// from the first of them; the fixed cells are the headers of that table. The toolkit's own table
/// would count the fixed cells as data, and call the current cell focused in every window.
void UseAccessibleGrids();

/// What is said of a data cell by itself: "Matrix A, row 2, column 2, 4".
QString NameOfCell(const MatrixGrid& grid, int row, int col);

/// Tells screen readers where the keyboard is: the grid's current cell, or a widget. Nothing where
/// it is elsewhere.
void TellFocus(MatrixGrid& grid);
void TellFocus(QWidget& widget);

/// Makes a widget another object for screen readers: they say nothing of an arrival where they are
/// already, as at an entry box that has gone on to another cell.
void RenewForScreenReaders(QWidget& widget);

}  // namespace qmx
