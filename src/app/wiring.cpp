// SPDX-License-Identifier: MIT
#include "app/wiring.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QMenu>
#include <functional>

#include "app/latest_result.h"
#include "app/tasks_menu.h"
#include "app/widgets.h"
#include "app/windows_menu.h"
#include "commands/dispatcher.h"
#include "commands/document_status.h"
#include "commands/file_commands.h"
#include "commands/grid_commands.h"
#include "commands/lifecycle.h"
#include "commands/parameters.h"
#include "commands/print_commands.h"
#include "commands/task_table.h"
#include "grids/qt_text.h"
#include "workspace/staleness.h"

namespace qmx {
namespace {

/// Connects the controls of one window with commands.
class Wires {
 public:
  Wires(frmQMX& window, CommandRunner& commands) : window_(window), commands_(commands) {}

  /// A press on a button runs a command that is a step of this name. Where there is no such control
  /// nothing is connected: A has no button that copies it into itself.
  template <typename... Given, typename... Wanted>
  void Press(const Control& control, const std::string& step, void (*command)(Context&, Wanted...),
             Given... given) {
    OnClick(control, [&commands = commands_, step, command, given...] {
      commands.Step(step, [&](Context& context) { command(context, given...); });
    });
  }

  /// A press that is no step.
  template <typename... Given, typename... Wanted>
  void Press(const Control& control, void (*command)(Context&, Wanted...), Given... given) {
    OnClick(control, [&commands = commands_, command, given...] {
      commands.Do([&](Context& context) { command(context, given...); });
    });
  }

  /// An option or check box that was switched: an option only when it becomes the selected one.
  template <typename... Given, typename... Wanted>
  void Switch(const Control& control, void (*command)(Context&, Wanted...), Given... given) {
    auto* button = qobject_cast<QAbstractButton*>(window_.Find(control));
    const bool isOption = button->autoExclusive();
    QObject::connect(button, &QAbstractButton::toggled, &window_,
                     [&commands = commands_, command, isOption, given...](bool on) {
                       if (!on && isOption) return;
                       commands.Do([&](Context& context) { command(context, given...); });
                     });
  }

  void Change(const Control& control, void (*command)(Context&)) {
    auto* field = qobject_cast<QLineEdit*>(window_.Find(control));
    QObject::connect(field, &QLineEdit::textChanged, &window_,
                     [&commands = commands_, command] { commands.Do(command); });
  }

  template <typename Action>
  void Choose(const char* entry, Action action) {
    QObject::connect(window_.Action(entry), &QAction::triggered, &window_, action);
  }
  void Choose(const char* entry, void (*command)(Context&)) {
    Choose(entry, [&commands = commands_, command] { commands.Do(command); });
  }

 private:
  template <typename Action>
  void OnClick(const Control& control, Action action) {
    auto* button = qobject_cast<QAbstractButton*>(window_.Find(control));
    if (button != nullptr) QObject::connect(button, &QAbstractButton::clicked, &window_, action);
  }

  frmQMX& window_;
  CommandRunner& commands_;
};

std::string TitleOf(Slot slot) { return std::string(InfoOf(slot).title); }

void WireSlots(Wires& wires) {
  for (const Slot slot : kAllSlots) {
    wires.Press(cmdShow(slot), ShowSlot, slot);
    wires.Press(cmdSave(slot), SaveSlot, slot);
    wires.Press(cmdPrint(slot), PrintSlot, slot);
    wires.Press(cmdIntoA(slot), TitleOf(slot) + " into A", CopyInto, kSlotA, slot);
    wires.Press(cmdIntoB(slot), TitleOf(slot) + " into B", CopyInto, kSlotB, slot);
  }
}

void WireOperands(Wires& wires) {
  wires.Press(cmdCreateA, "Create of matrix A", CreateOperand, kSlotA);
  wires.Press(cmdCreateB, "Create of matrix B", CreateOperand, kSlotB);
  wires.Press(cmdRetrieveA, "Retrieve of matrix A", RetrieveOperand, kSlotA);
  wires.Press(cmdRetrieveB, "Retrieve of matrix B", RetrieveOperand, kSlotB);
  wires.Press(cmdClearA, "Clear of matrix A", ClearOperand, kSlotA);
  wires.Press(cmdClearB, "Clear of matrix B", ClearOperand, kSlotB);
  wires.Press(cmdResetA, "Reset of matrix A", ResetOperand, kSlotA);
  wires.Press(cmdResetB, "Reset of matrix B", ResetOperand, kSlotB);
  wires.Press(cmdExchangeAandB, "Exchange of A and B", ExchangeAandB);
}

void WireSystem(Wires& wires) {
  wires.Press(cmdCreateSystem, "Create of the system", CreateSystem);
  wires.Press(cmdRetrieveSystem, "Retrieve of the system", RetrieveSystem);
  wires.Press(cmdClearSystem, "Clear of the system", ClearOperand, kSlotSystem);
  wires.Press(cmdResetSystem, "Reset of the system", ResetSystemCommand);
  wires.Press(cmdSolve, "Solve", PressSolve);
  wires.Press(cmdRetrieveLU, "Retrieve LU factors", RetrieveLU);
  wires.Press(cmdSaveLU, SaveLU);
}

void WireParameters(Wires& wires) {
  for (int kind = 0; kind < kCreateOptions; ++kind)
    wires.Switch(OptCreate(kind), OptCreateClick, kind);
  for (int way = 0; way < kSystemKinds; ++way) wires.Switch(OptSystem(way), OptSystemClick, way);
  wires.Switch(chkSymmetric, ChkSymmetricClick);
  // These change nothing but what a saved project would hold.
  for (const EigenParameter& parameter : kEigenParameters)
    wires.Change(parameter.field, [](Context&) {});
  wires.Change(txtRowsCreated, TxtRowsCreatedChange);
  wires.Change(txtEquations, TxtEquationsChange);
}

/// A command that reads or writes the project's file: what it leaves is what that file holds.
template <typename FileCommand>
auto Filing(CommandRunner& commands, FileCommand command) {
  return [&commands, command](Context& context) {
    if (command(context)) commands.MarkSaved();
  };
}

void WireMenus(Wires& wires, CommandRunner& commands) {
  wires.Choose("mnuOpen", [&commands] { commands.Step("Open", Filing(commands, OpenProject)); });
  wires.Choose("mnuSave", [&commands] { commands.Do(Filing(commands, SaveProject)); });
  wires.Choose("mnuSaveAs", [&commands] { commands.Do(Filing(commands, SaveProjectAs)); });
  wires.Choose("mnuPrint", PrintReport);
  wires.Choose("mnuUndo", [&commands] { commands.Undo(); });
  wires.Choose("mnuRedo", [&commands] { commands.Redo(); });
}

/// The entries of the Edit menu name the steps that they take back or do again.
void NameSteps(frmQMX& window, const CommandRunner& commands) {
  const auto name = [&window](const char* entry, const QString& verb, const std::string& step) {
    QAction* action = window.Action(entry);
    QString text = ToQString(step);
    action->setText(step.empty() ? verb : verb + ' ' + text.replace('&', "&&"));
    action->setEnabled(!step.empty());
  };
  name("mnuUndo", QObject::tr("&Undo"), commands.Steps().UndoName());
  name("mnuRedo", QObject::tr("&Redo"), commands.Steps().RedoName());
}

}  // namespace

void OpenByName(CommandRunner& commands, const std::string& name) {
  commands.Step("Open", Filing(commands, [&name](Context& context) {
                  return OpenNamedProject(context, name);
                }));
}

void WireMainWindow(frmQMX& window, DesktopScreen& screen, CommandRunner& commands) {
  Wires wires(window, commands);
  for (const TaskInfo& task : Tasks())
    wires.Press(cmdTask(task.index), std::string(task.caption), PressTask, task.index);
  wires.Press(cmdShowResults, ShowResultsActivated, &screen);
  WireSlots(wires);
  WireOperands(wires);
  WireSystem(wires);
  WireParameters(wires);
  WireMenus(wires, commands);
  WireTasksMenu(window);
  QObject::connect(window.Latest(), &LatestResult::Chosen, &window, [&window](Slot slot) {
    qobject_cast<QAbstractButton*>(window.Find(cmdShow(slot)))->click();
  });
  WireWindowsMenu(window, screen, commands);
  QObject::connect(window.Action("mnuExit"), &QAction::triggered, &window, &QWidget::close);
  QObject::connect(&window, &frmQMX::FilesDropped, &window,
                   [&commands](const QString& name) { OpenByName(commands, name.toStdString()); });
}

void ShowWhatStandsWhere(frmQMX& window, const CommandRunner& commands,
                         const Workspace& workspace) {
  NameSteps(window, commands);
  const DocumentStatus status = StatusOf(workspace, commands.IsChanged());
  window.SetDocument(ToQString(status.text), ToQString(status.toolTip));
}

void MarkStaleResults(frmQMX& window, const DesktopScreen& screen, const Workspace& workspace) {
  const auto mark = [&window](const Control& control, const QString& why) {
    auto* label = qobject_cast<QLabel*>(window.Find(control));
    if (label != nullptr && label->toolTip() != why) ShowStale(label, why);
  };
  for (const ResultInfo& info : kResults) {
    const QString why = ToQString(Staleness(workspace, info.result));
    if (!info.HasMatrices()) mark(info.stale, why);
    ForEachSlot(info, [&](Slot slot) {
      mark({"lblStale", slot}, why);
      GridWindow* shown = screen.Window(slot);
      if (shown != nullptr && !HasPermanentFrame(slot)) shown->ShowStale(why);
    });
  }
  const GridWindow* latest = window.Latest()->Window();
  if (latest != nullptr) {
    const Result result = ResultOf(latest->Slot()).result;
    window.Latest()->ShowStale(ToQString(Staleness(workspace, result)));
  }
}

}  // namespace qmx
