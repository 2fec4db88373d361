// SPDX-License-Identifier: MIT
#include "app/panel_kit.h"

#include <QApplication>
#include <QPointer>
#include <array>

#include "app/drawn_icon.h"
#include "app/panel_style.h"
#include "commands/task_table.h"
#include "grids/qt_text.h"
#include "workspace/slot_table.h"

namespace qmx {
namespace {

constexpr int kGap = 4;

struct SlotButton {
  Control (*control)(int slot);
  const char* caption;
  const char* icon;
  int notFor;  ///< The slot that has no such button.
};

constexpr std::array<SlotButton, 5> kSlotButtons{{
    {cmdShow, "Show", "show", -1},
    {cmdSave, "Save", "save", -1},
    {cmdPrint, "Print", "print", -1},
    {cmdIntoA, "Into A", "into_a", kSlotA},
    {cmdIntoB, "Into B", "into_b", kSlotB},
}};

}  // namespace

QGroupBox* MakeFrame(const Control& control, const QString& title, QWidget* parent) {
  auto* frame = new QGroupBox(title, parent);
  // A style is not a widget's own: the program's lives as long as its windows.
  static QPointer<PanelStyle> style;
  if (style == nullptr) {
    style = new PanelStyle;
    style->setParent(qApp);
  }
  frame->setStyle(style);
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
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(kGap);
  return rows;
}

QHBoxLayout* AddRow(QVBoxLayout* rows) {
  auto* row = new QHBoxLayout;
  row->setSpacing(kGap);
  rows->addLayout(row);
  return row;
}

ButtonRow* AddButtonRow(QVBoxLayout* rows) {
  auto* row = new ButtonRow(nullptr);
  rows->addLayout(row);
  return row;
}

void AddField(QBoxLayout* row, const Control& control, QWidget* parent, const Control& label) {
  Field* field = MakeField(control, parent);
  row->addWidget(MakeCaption(field, control, label, parent));
  row->addWidget(field);
}

CommandButton* MakeButton(const Control& control, const QString& caption, QWidget* parent,
                          const QString& toolTip) {
  auto* button = new CommandButton(control, caption, parent);
  button->setToolTip(toolTip);
  // Heard alone, "Show" does not tell what.
  button->setAccessibleName(parent->accessibleName() + ": " + QString(caption).remove('&'));
  return button;
}

CommandButton* MakeIconButton(const Control& control, const QString& caption, const char* icon,
                              QWidget* parent) {
  CommandButton* button = MakeButton(control, caption, parent);
  button->setIcon(DrawnIcon(icon));
  return button;
}

CommandButton* MakeTaskButton(Task task, QWidget* parent) {
  const TaskInfo& info = *FindTask(task);
  auto* button = new CommandButton(cmdTask(task), ToQString(info.caption), parent);
  button->setToolTip(ToQString(info.toolTip));
  return button;
}

void AddSlotButtons(ButtonRow* row, Slot slot, QWidget* parent) {
  for (const SlotButton& entry : kSlotButtons) {
    if (slot == entry.notFor) continue;
    row->Add(MakeIconButton(entry.control(slot), entry.caption, entry.icon, parent));
  }
}

}  // namespace qmx
