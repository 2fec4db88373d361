#include "app/wiring.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QFile>
#include <QMenu>

#include "commands/dispatcher.h"
#include "commands/file_commands.h"
#include "commands/grid_commands.h"
#include "commands/lifecycle.h"
#include "commands/parameters.h"
#include "commands/print_commands.h"
#include "commands/task_table.h"
#include "grids/qt_text.h"

namespace qmx {
namespace {

/// Connects the controls of one window with commands that all take the same context.
class Wires {
 public:
  Wires(frmQMX& window, Context& context) : window_(window), context_(context) {}

  /// A press on a button. Where there is no such control nothing is connected: A has no button that
  /// copies it into itself.
  template <typename... Given, typename... Wanted>
  void Press(const Control& control, void (*command)(Context&, Wanted...), Given... given) {
    auto* button = qobject_cast<QAbstractButton*>(window_.Find(control));
    if (button == nullptr) return;
    QObject::connect(button, &QAbstractButton::clicked, &window_,
                     [&context = context_, command, given...] { command(context, given...); });
  }

  /// An option or check box that was switched: an option only when it becomes the selected one.
  template <typename... Given, typename... Wanted>
  void Switch(const Control& control, void (*command)(Context&, Wanted...), Given... given) {
    auto* button = qobject_cast<QAbstractButton*>(window_.Find(control));
    const bool isOption = button->autoExclusive();
    QObject::connect(button, &QAbstractButton::toggled, &window_,
                     [&context = context_, command, isOption, given...](bool on) {
                       if (on || !isOption) command(context, given...);
                     });
  }

  void Change(const Control& control, void (*command)(Context&)) {
    auto* field = qobject_cast<QLineEdit*>(window_.Find(control));
    QObject::connect(field, &QLineEdit::textChanged, &window_,
                     [&context = context_, command] { command(context); });
  }

  void Choose(const char* entry, void (*command)(Context&)) {
    QObject::connect(window_.Action(entry), &QAction::triggered, &window_,
                     [&context = context_, command] { command(context); });
  }

 private:
  frmQMX& window_;
  Context& context_;
};

void WireSlots(Wires& wires) {
  for (const Slot slot : kAllSlots) {
    wires.Press(cmdShow(slot), ShowSlot, slot);
    wires.Press(cmdSave(slot), SaveSlot, slot);
    wires.Press(cmdPrint(slot), PrintSlot, slot);
    wires.Press(cmdIntoA(slot), CopyInto, kSlotA, slot);
    wires.Press(cmdIntoB(slot), CopyInto, kSlotB, slot);
  }
}

void WireOperands(Wires& wires) {
  wires.Press(cmdCreateA, CreateOperand, kSlotA);
  wires.Press(cmdCreateB, CreateOperand, kSlotB);
  wires.Press(cmdRetrieveA, RetrieveOperand, kSlotA);
  wires.Press(cmdRetrieveB, RetrieveOperand, kSlotB);
  wires.Press(cmdClearA, ClearOperand, kSlotA);
  wires.Press(cmdClearB, ClearOperand, kSlotB);
  wires.Press(cmdResetA, ResetOperand, kSlotA);
  wires.Press(cmdResetB, ResetOperand, kSlotB);
  wires.Press(cmdExchangeAandB, ExchangeAandB);
}

void WireSystem(Wires& wires) {
  wires.Press(cmdCreateSystem, CreateSystem);
  wires.Press(cmdRetrieveSystem, RetrieveSystem);
  wires.Press(cmdClearSystem, ClearOperand, kSlotSystem);
  wires.Press(cmdResetSystem, ResetSystemCommand);
  wires.Press(cmdSolve, PressSolve);
  wires.Press(cmdRetrieveLU, RetrieveLU);
  wires.Press(cmdSaveLU, SaveLU);
}

void WireParameters(Wires& wires) {
  for (int kind = 0; kind < kCreateOptions; ++kind)
    wires.Switch(OptCreate(kind), OptCreateClick, kind);
  for (int way = 0; way < kSystemKinds; ++way) wires.Switch(OptSystem(way), OptSystemClick, way);
  wires.Switch(chkSymmetric, ChkSymmetricClick);
  wires.Change(txtRowsCreated, TxtRowsCreatedChange);
  wires.Change(txtEquations, TxtEquationsChange);
}

void WireFileMenu(Wires& wires) {
  wires.Choose("mnuOpen", OpenProject);
  wires.Choose("mnuSave", SaveProject);
  wires.Choose("mnuSaveAs", SaveProjectAs);
  wires.Choose("mnuPrint", PrintReport);
}

/// Who asks for the results list by hand wants to go through it with the keyboard.
void ActivateResults([[maybe_unused]] Context& context, DesktopScreen* screen) {
  screen->Results()->activateWindow();
}

/// Lists the windows that are on the screen below the fixed entries.
void ListWindows(QMenu* menu, DesktopScreen& screen, Context& context) {
  for (QAction* listed : menu->actions()) {
    if (listed->data().toBool()) delete listed;
  }
  for (const Slot slot : kAllSlots) {
    const GridWindow* window = screen.Window(slot);
    if (window == nullptr || !window->isVisible()) continue;
    QAction* entry = menu->addAction(window->windowTitle());
    entry->setData(true);
    QObject::connect(entry, &QAction::triggered, menu,
                     [&context, slot] { ShowSlot(context, slot); });
  }
  if (screen.Results() == nullptr || !screen.Results()->isVisible()) return;
  QAction* results = menu->addAction(screen.Results()->windowTitle());
  results->setData(true);
  QObject::connect(results, &QAction::triggered, menu, [&context, &screen] {
    PressShowResults(context);
    ActivateResults(context, &screen);
  });
}

void WireWindowMenu(frmQMX& window, DesktopScreen& screen, Context& context) {
  auto* menu = window.findChild<QMenu*>("mnuWindows");
  QObject::connect(menu, &QMenu::aboutToShow, menu,
                   [menu, &screen, &context] { ListWindows(menu, screen, context); });
  QObject::connect(window.Action("mnuMain"), &QAction::triggered, &window,
                   [&screen] { screen.BringMainToFront(); });
  QObject::connect(window.Action("mnuHideAll"), &QAction::triggered, &window, [&screen] {
    for (QWidget* shown : screen.ShownWindows()) shown->hide();
  });
}

}  // namespace

void WireMainWindow(frmQMX& window, DesktopScreen& screen, Context& context) {
  Wires wires(window, context);
  for (const TaskInfo& task : Tasks()) wires.Press(cmdTask(task.index), PressTask, task.index);
  wires.Press(cmdShowResults, PressShowResults);
  wires.Press(cmdShowResults, ActivateResults, &screen);
  WireSlots(wires);
  WireOperands(wires);
  WireSystem(wires);
  WireParameters(wires);
  WireFileMenu(wires);
  WireWindowMenu(window, screen, context);
  QObject::connect(window.Action("mnuExit"), &QAction::triggered, &window, &QWidget::close);
  QObject::connect(&window, &frmQMX::FilesDropped, &window, [&context](const QString& name) {
    OpenNamedProject(context, QFile::encodeName(name).toStdString());
  });
}

}  // namespace qmx
