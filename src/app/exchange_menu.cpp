// SPDX-License-Identifier: MIT
#include "app/exchange_menu.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMenu>
#include <QShortcut>

#include "app/wiring.h"
#include "commands/export_commands.h"
#include "commands/grid_commands.h"
#include "commands/import_commands.h"
#include "commands/system_columns.h"
#include "commands/table_commands.h"
#include "grids/dropped_file.h"
#include "grids/qt_text.h"

namespace qmx {
namespace {

/// What a file can be imported into.
struct Target {
  Slot slot;
  const char* entry;
  const char* caption;
};
constexpr Target kTargets[] = {
    {kSlotA, "mnuImportA", "Matrix &A..."},
    {kSlotB, "mnuImportB", "Matrix &B..."},
    {kSlotCreated, "mnuImportCreated", "&Special matrix..."},
    {kSlotSystem, "mnuImportSystem", "S&ystem of linear equations..."},
};

std::string ImportName(Slot target) { return "Import into " + std::string(InfoOf(target).title); }

QMenu* MakeMenu(const char* name, const QString& title, QMenu* parent) {
  auto* menu = new QMenu(title, parent);
  menu->setObjectName(name);
  return menu;
}

template <typename Command>
QAction* AddEntry(QMenu* menu, const QString& name, const QString& caption, Command command) {
  QAction* entry = menu->addAction(caption);
  entry->setObjectName(name);
  QObject::connect(entry, &QAction::triggered, entry, command);
  return entry;
}

std::string ClipboardText() { return QApplication::clipboard()->text().toStdString(); }

}  // namespace

ExchangeMenu::ExchangeMenu(frmQMX& window, DesktopScreen& screen, CommandRunner& commands)
    : window_(window), screen_(screen), commands_(commands), dialogs_(window), preview_(window) {
  auto* file = qobject_cast<QMenu*>(window.Action("mnuPrint")->parent());
  QAction* before = file->insertSeparator(window.Action("mnuPrint"));
  AddImport(file, before);
  AddExport(file, before);
  auto* table = new QAction(tr("Print &table..."), file);
  table->setObjectName("mnuPrintTable");
  table->setToolTip(tr("Shows a matrix as a table on pages, and prints it"));
  file->insertAction(window.Action("mnuPrint"), table);
  file->removeAction(window.Action("mnuPrint"));
  file->insertAction(table, window.Action("mnuPrint"));
  connect(table, &QAction::triggered, this, &ExchangeMenu::PrintActiveTable);
  AddToEdit(window.findChild<QMenu*>("mnuEdit"));
  AcceptDrops();
  auto* paste = new QShortcut(QKeySequence::Paste, &window);
  connect(paste, &QShortcut::activated, this, &ExchangeMenu::PasteOutsideFields);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
    auto* active = now == nullptr ? nullptr : qobject_cast<GridWindow*>(now->window());
    if (active != nullptr) active_ = active;
  });
}

void ExchangeMenu::AddImport(QMenu* file, QAction* before) {
  QMenu* menu = MakeMenu("mnuImport", tr("&Import"), file);
  file->insertMenu(before, menu);
  for (const Target& target : kTargets) {
    QAction* entry = AddEntry(menu, target.entry, tr(target.caption),
                              [this, slot = target.slot] { Import(slot); });
    entry->setToolTip(tr("Reads a file of another program"));
  }
}

void ExchangeMenu::AddExport(QMenu* file, QAction* before) {
  QMenu* menu = MakeMenu("mnuExport", tr("&Export"), file);
  file->insertMenu(before, menu);
  for (const Slot slot : kAllSlots) {
    const QString title = ToQString(InfoOf(slot).title) + "...";
    QAction* entry =
        AddEntry(menu, QString("mnuExport_%1").arg(static_cast<int>(slot)), title, [this, slot] {
          commands_.Do([this, slot](Context& context) { ExportSlot(context, dialogs_, slot); });
        });
    entry->setEnabled(false);
    exports_[slot] = entry;
  }
}

void ExchangeMenu::AddToEdit(QMenu* edit) {
  edit->addSeparator();
  AddEntry(edit, "mnuPasteAsA", tr("Paste as &A") + "\tCtrl+V", [this] {
    PasteAsNew(kSlotA);
  })->setToolTip(tr("Makes matrix A of the numbers in the clipboard"));
  AddEntry(edit, "mnuPasteAsB", tr("Paste as &B"), [this] {
    PasteAsNew(kSlotB);
  })->setToolTip(tr("Makes matrix B of the numbers in the clipboard"));
  QMenu* copy = MakeMenu("mnuCopyAs", tr("&Copy as"), edit);
  edit->addMenu(copy);
  for (const CopyFormInfo& info : kCopyForms) {
    AddEntry(copy, QString("mnuCopyAs_%1").arg(static_cast<int>(info.form)), ToQString(info.title),
             [this, form = info.form] { CopyAs(form); });
  }
  edit->addSeparator();
  AddEntry(edit, "mnuIntoSystem", tr("A and B into the &System"), [this] {
    commands_.Step("A and B into the system",
                   [this](Context& context) { IntoSystem(context, dialogs_); });
  })->setToolTip(tr("Makes a system of A, the coefficients, and B, the right-hand side"));
}

void ExchangeMenu::AcceptDrops() {
  screen_.SetDropHandler([this](Slot slot, const QString& name) { TakeLater(slot, name); });
  for (const Target& target : kTargets) {
    auto* frame = qobject_cast<QWidget*>(window_.Find(fraFrame(target.slot)));
    if (frame == nullptr) continue;
    frame->setAcceptDrops(true);
    frame->installEventFilter(this);
  }
}

void ExchangeMenu::Update(const Workspace& workspace) {
  hasA_ = workspace.ACreated;
  for (const Slot slot : kAllSlots) exports_[slot]->setEnabled(HasMatrix(workspace, slot));
}

void ExchangeMenu::Import(Slot target) {
  commands_.Step(ImportName(target),
                 [&](Context& context) { ImportFile(context, dialogs_, target); });
}

void ExchangeMenu::TakeLater(Slot target, const QString& name) {
  dropTarget_ = target;
  dropped_ = name.toStdString();
  QMetaObject::invokeMethod(this, "TakeDropped", Qt::QueuedConnection);
}

void ExchangeMenu::TakeDropped() {
  if (dropped_.ends_with(".qmx")) return OpenByName(commands_, dropped_);
  commands_.Step(ImportName(dropTarget_), [this](Context& context) {
    ImportNamedFile(context, dialogs_, dropTarget_, dropped_);
  });
}

bool ExchangeMenu::eventFilter(QObject* watched, QEvent* event) {
  const bool enters = event->type() == QEvent::DragEnter;
  if (!enters && event->type() != QEvent::Drop) return QObject::eventFilter(watched, event);
  auto* drop = static_cast<QDropEvent*>(event);
  const QString name = DroppedFile(*drop);
  if (name.isEmpty()) return QObject::eventFilter(watched, event);
  drop->acceptProposedAction();
  for (const Target& target : kTargets) {
    if (!enters && window_.Find(fraFrame(target.slot)) == watched) TakeLater(target.slot, name);
  }
  return true;
}

void ExchangeMenu::PasteAsNew(Slot operand) {
  commands_.Step("paste as " + std::string(InfoOf(operand).title),
                 [&](Context& context) { PasteAs(context, operand, ClipboardText()); });
}

void ExchangeMenu::PasteOutsideFields() {
  if (!hasA_) return PasteAsNew(kSlotA);
  commands_.Do([](Context& context) {
    context.view.SetStatus(
        "There is a matrix A already. Edit > Paste as A replaces it, Paste as B makes matrix B.");
  });
}

void ExchangeMenu::CopyAs(CopyForm form) {
  if (active_ != nullptr && active_->isVisible()) return active_->CopyAs(form);
  commands_.Do([](Context& context) {
    context.view.SetStatus("Click into the window of a matrix first: it is what will be copied.");
  });
}

void ExchangeMenu::PrintActiveTable() {
  std::optional<Slot> wanted;
  if (active_ != nullptr && active_->isVisible()) wanted = active_->Slot();
  commands_.Do([&](Context& context) { PrintTable(context, preview_, wanted); });
}

}  // namespace qmx
