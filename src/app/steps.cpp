// SPDX-License-Identifier: MIT
#include "app/steps.h"

#include <QAction>
#include <QMenu>
#include <utility>

#include "app/document_output.h"
#include "app/kept_form.h"
#include "app/steps_button.h"
#include "grids/qt_text.h"
#include "workspace/staleness.h"

namespace qmx {
namespace {

/// Where the window of a result's first matrix is; nothing for numbers and verdicts.
std::optional<Slot> SlotOf(Result result) {
  return InfoOf(result).HasMatrices() ? std::optional(InfoOf(result).firstSlot) : std::nullopt;
}

QString EntryName(Result result) { return "mnuSteps_" + QString::number(result); }

}  // namespace

Steps::Steps(const Workspace& workspace, frmQMX& main, DesktopScreen& screen,
             CommandRunner& commands, const Deriver* deriver, Settle settle)
    : workspace_(workspace),
      main_(main),
      screen_(screen),
      commands_(commands),
      deriver_(deriver),
      settle_(std::move(settle)) {
  WireScalars();
  WireMenu();
}

void Steps::WireScalars() {
  for (StepsButton* button : main_.findChildren<StepsButton*>()) {
    button->setVisible(deriver_ != nullptr);
    connect(button, &QPushButton::clicked, this, [this, result = button->Of()] { Show(result); });
  }
}

void Steps::WireMenu() {
  auto* menu = main_.findChild<QMenu*>("mnuSteps");
  menu->menuAction()->setVisible(deriver_ != nullptr);
  for (const ResultInfo& info : kResults) {
    if (!HasDerivation(info.result)) continue;
    QAction* entry = menu->addAction(ToQString(DerivationTitle(info.result)));
    entry->setObjectName(EntryName(info.result));
    connect(entry, &QAction::triggered, this, [this, result = info.result] { Show(result); });
  }
}

void Steps::Attach(GridWindow& window) {
  const Result result = ResultOf(window.Slot()).result;
  if (deriver_ == nullptr || !HasDerivation(result)) return;
  auto* button = new StepsButton(result, "cmdSteps", &window);
  window.AddToLowerLine(*button);
  connect(button, &QPushButton::clicked, this, [this, result] { Show(result); });
}

void Steps::Enable() {
  for (const ResultInfo& info : kResults) {
    if (!HasDerivation(info.result)) continue;
    const QString why = ToQString(WhyNoSteps(workspace_, info.result));
    auto* entry = main_.findChild<QAction*>(EntryName(info.result));
    entry->setVisible(workspace_.*info.flag);
    entry->setEnabled(why.isEmpty());
    entry->setToolTip(why.isEmpty() ? tr("Shows how this came about") : why);
    ForEachSlot(info, [&](Slot slot) {
      GridWindow* window = screen_.Window(slot);
      if (window == nullptr) return;
      if (auto* button = window->findChild<StepsButton*>()) button->Enable(why);
    });
  }
  for (StepsButton* button : main_.findChildren<StepsButton*>())
    button->Enable(ToQString(WhyNoSteps(workspace_, button->Of())));
  const auto* menu = main_.findChild<QMenu*>("mnuSteps");
  bool isAny = false;
  for (const QAction* entry : menu->actions()) isAny = isAny || entry->isVisible();
  menu->menuAction()->setEnabled(isAny);
}

std::string Steps::Note(Result result) const {
  const Shown& shown = shown_[result];
  const std::string name(InfoOf(result).name);
  if (workspace_.computations[result] == shown.of && workspace_.*InfoOf(result).flag) {
    const std::string stale = ShortStaleness(workspace_, result);
    return stale.empty() ? stale : stale + " these steps were made.";
  }
  if (!(workspace_.*InfoOf(result).flag))
    return "These are the steps of a result that is not there any more.";
  return "These are the steps of another result: " + name + " on show is not this one.";
}

void Steps::AfterCommand() {
  if (deriver_ == nullptr) return;
  Enable();
  for (const ResultInfo& info : kResults) {
    const Shown& shown = shown_[info.result];
    if (shown.window == nullptr) continue;
    shown.window->ShowNote(ToQString(Note(info.result)),
                           WhyNoSteps(workspace_, info.result).empty());
  }
}

DocumentWindow& Steps::Make(Result result) {
  auto* window =
      new DocumentWindow("frmSteps", tr("Steps: %1").arg(ToQString(DerivationTitle(result))));
  shown_[result].window = window;
  window->SetForm(KeptForm());
  connect(window, &DocumentWindow::FormChosen, this, &KeepForm);
  connect(window, &DocumentWindow::RenewAsked, this, [this, result] { Show(result); });
  connect(window, &DocumentWindow::PrintAsked, window, [window] { PrintDocument(*window); });
  connect(window, &DocumentWindow::PdfAsked, window,
          [this, window] { SaveDocument(*window, commands_); });
  // Nobody waits any more for what is being derived.
  connect(window, &QObject::destroyed, this, [this, result] { shown_[result] = {}; });
  window->adjustSize();
  settle_(*window, SlotOf(result));
  return *window;
}

void Steps::Show(Result result) {
  // While something is computed the results may not be what they were.
  if (deriver_ == nullptr || commands_.IsBusy() || !WhyNoSteps(workspace_, result).empty()) return;
  // One that was closed goes at the next turn of the loop.
  if (shown_[result].window != nullptr && shown_[result].window->isHidden())
    delete shown_[result].window.data();
  Derive(result);
  DocumentWindow& window = *shown_[result].window;
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
  window.activateWindow();
}

void Steps::Derive(Result result) {
  int row = 0;
  int col = 0;
  if (const std::optional<Slot> slot = SlotOf(result)) {
    const GridWindow* grid = screen_.Window(*slot);
    if (grid != nullptr && grid->Grid().HasCurrentCell()) {
      row = grid->Grid().Row() + 1 - grid->Grid().Model().HeaderRows();
      col = grid->Grid().Col();
    }
  }
  Shown& shown = shown_[result];
  const std::shared_ptr<const Computation> of = workspace_.computations[result];
  const bool isSame = shown.of == of && shown.row == row && shown.col == col;
  if (shown.window != nullptr && isSame) return;
  DocumentWindow& window = shown.window == nullptr ? Make(result) : *shown.window;
  shown.of = of;
  shown.row = row;
  shown.col = col;
  window.ShowNote({}, false);
  window.ShowWorking();
  auto question =
      std::make_shared<const DerivationQuestion>(StepsQuestion(workspace_, result, row, col));
  auto document = std::make_shared<Document>();
  shown.run = runs_.Start(
      [this, question, document](const DerivationLook& look) {
        *document = deriver_->Derive(*question, look);
      },
      [window = shown.window, document](DerivationRuns::End end) {
        if (end == DerivationRuns::End::kNoMemory)
          return window->ShowFailure(tr("There is not enough memory for the steps."));
        window->ShowDocument(document, tr("There are no steps of this."));
      });
}

void Steps::CloseAll() {
  runs_.StopAll();
  for (Shown& shown : shown_) delete shown.window.data();
}

}  // namespace qmx
