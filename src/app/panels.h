// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "workspace/slot_table.h"

namespace qmx {

// The parts of the main window. Each builds its controls, named as the tables name them, in the
// order in which Tab goes through them; none knows what the controls do.

/// The frame of A or B: dimensions, and the buttons that make and use the operand.
QWidget* BuildOperandPanel(Slot operand, QWidget* parent);
/// The button that stands between A and B.
QWidget* BuildExchangeButton(QWidget* parent);
/// The frame of the system of equations.
QWidget* BuildSystemPanel(QWidget* parent);
/// The frame of the special matrix.
QWidget* BuildSpecialMatrixPanel(QWidget* parent);
/// The tasks with the parameters they read and the scalars they find.
QWidget* BuildTaskPanel(QWidget* parent);
/// One place for each result. A place keeps its size while its frame is hidden.
QWidget* BuildResultsPanel(QWidget* parent);

}  // namespace qmx
