// SPDX-License-Identifier: MIT
#pragma once

#include <QAction>
#include <QKeySequence>
#include <QMenuBar>
#include <array>

#include "app/frm_qmx.h"
#include "workspace/task_numbers.h"

namespace qmx {

/// The key that stands for a task, wherever in the program the keyboard is.
struct TaskKey {
  Task task;
  int key;  ///< Together with Ctrl and Shift.
};

/// All tasks in the order of the menu, with the letter of each: where another task or a usual key
/// of desktops has the first letter of its name, another one that can be kept in mind.
inline constexpr std::array<TaskKey, 17> kTaskKeys{{
    {kTaskSum, Qt::Key_A},         // Add.
    {kTaskDifference, Qt::Key_B},  // suBtract.
    {kTaskProduct, Qt::Key_M},
    {kTaskDeterminant, Qt::Key_D},
    {kTaskTrace, Qt::Key_T},
    {kTaskDefiniteness, Qt::Key_F},
    {kTaskSymmetry, Qt::Key_Y},
    {kTaskInverse, Qt::Key_I},
    {kTaskTranspose, Qt::Key_X},  // Rows and columns cross.
    {kTaskAdjoint, Qt::Key_J},
    {kTaskAdjointByInverse, Qt::Key_O},  // The other way.
    {kTaskScale, Qt::Key_K},             // k times A.
    {kTaskShift, Qt::Key_H},
    {kTaskLU, Qt::Key_L},
    {kTaskQR, Qt::Key_R},
    {kTaskEigen, Qt::Key_E},
    {kTaskSpecialMatrix, Qt::Key_N},  // New.
}};

/// Adds the menu of the tasks to the bar, an entry `mnuTask_i` for each, and below them the empty
/// menu `mnuSteps`.
void AddTasksMenu(QMenuBar* bar);

/// Lets an entry of a menu do what a button of the main window does, and nothing else: it is
/// enabled while the button is.
void PressByEntry(QAction* entry, QAbstractButton* button);

/// Lets the entries of the tasks press their buttons.
void WireTasksMenu(frmQMX& window);

}  // namespace qmx
