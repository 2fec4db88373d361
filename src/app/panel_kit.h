// SPDX-License-Identifier: MIT
#pragma once

#include <QBoxLayout>
#include <QGroupBox>
#include <QLabel>

#include "app/button_row.h"
#include "app/widgets.h"
#include "workspace/slot_table.h"
#include "workspace/task_numbers.h"

namespace qmx {

// What the panels are put together from.

/// A titled frame with a name.
QGroupBox* MakeFrame(const Control& control, const QString& title, QWidget* parent);
/// The frame of a slot, with its title.
QGroupBox* MakeSlotFrame(Slot slot, QWidget* parent);
/// Gives a frame rows, one below the other.
QVBoxLayout* MakeRows(QWidget* frame);
QHBoxLayout* AddRow(QVBoxLayout* rows);
/// A row of buttons that show their icons where there is no room for all of their captions.
ButtonRow* AddButtonRow(QVBoxLayout* rows);

/// A field with its caption before it, which may have a name of its own.
void AddField(QBoxLayout* row, const Control& control, QWidget* parent, const Control& label = {});
/// A button that is announced with the name of the frame it stands in.
CommandButton* MakeButton(const Control& control, const QString& caption, QWidget* parent,
                          const QString& toolTip = {});
/// The same with an icon of the program, which may stand for its caption.
CommandButton* MakeIconButton(const Control& control, const QString& caption, const char* icon,
                              QWidget* parent);
/// The button of a task, as the task table describes it.
CommandButton* MakeTaskButton(Task task, QWidget* parent);
/// Adds those of the buttons Show, Save, Print, Into A and Into B that a slot has: A is not copied
/// into A, nor B into B.
void AddSlotButtons(ButtonRow* row, Slot slot, QWidget* parent);

}  // namespace qmx
