// SPDX-License-Identifier: MIT
#include "app/panel_kit.h"

#include <array>

#include "commands/task_table.h"
#include "grids/qt_text.h"
#include "workspace/slot_table.h"

namespace qmx {
namespace {

constexpr int kGap = 4;

struct SlotButton {
  Control (*control)(int slot);
  const char* caption;
  int notFor;  ///< The slot that has no such button.
};

constexpr std::array<SlotButton, 5> kSlotButtons{{
    {cmdShow, "Show", -1},
    {cmdSave, "Save", -1},
    {cmdPrint, "Print", -1},
    {cmdIntoA, "Into A", kSlotA},
    {cmdIntoB, "Into B", kSlotB},
}};

}  // namespace

QGroupBox* MakeFrame(const Control& control, const QString& title, QWidget* parent) {
  auto* frame = new QGroupBox(title, parent);
  frame->setObjectName(QString::fromStdString(control.ObjectName()));
  // A frame within a frame would otherwise be announced by the outer one's title.
  frame->setAccessibleName(title);
  return frame;
}

QGroupBox* MakeSlotFrame(Slot slot, QWidget* parent) {
  return MakeFrame(fraFrame(slot), ToQString(InfoOf(slot).title), parent);
}

QVBoxLayout* MakeRows(QWidget* frame) {
  auto* rows = new QVBoxLayout(frame);
  rows->setContentsMargins(6, 4, 6, 6);
  rows->setSpacing(kGap);
  return rows;
}

QHBoxLayout* AddRow(QVBoxLayout* rows) {
  auto* row = new QHBoxLayout;
  row->setSpacing(kGap);
  rows->addLayout(row);
  return row;
}

void AddField(QBoxLayout* row, const Control& control, QWidget* parent, const Control& label) {
  Field* field = MakeField(control, parent);
  row->addWidget(MakeCaption(field, control, label, parent));
  row->addWidget(field);
}

CommandButton* AddButton(QBoxLayout* row, const Control& control, const QString& caption,
                         QWidget* parent, const QString& toolTip) {
  auto* button = new CommandButton(control, caption, parent);
  button->setToolTip(toolTip);
  // Heard alone, "Show" does not tell what.
  button->setAccessibleName(parent->accessibleName() + ": " + QString(caption).remove('&'));
  row->addWidget(button);
  return button;
}

CommandButton* MakeTaskButton(Task task, QWidget* parent) {
  const TaskInfo& info = *FindTask(task);
  auto* button = new CommandButton(cmdTask(task), ToQString(info.caption), parent);
  button->setToolTip(ToQString(info.toolTip));
  return button;
}

void AddSlotButtons(QBoxLayout* row, Slot slot, QWidget* parent) {
  for (const SlotButton& entry : kSlotButtons) {
    if (slot == entry.notFor) continue;
    AddButton(row, entry.control(slot), entry.caption, parent);
  }
}

}  // namespace qmx
