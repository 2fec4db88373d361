// SPDX-License-Identifier: MIT
#include "app/steps.h"

#include <QAction>

#include "grids/qt_text.h"
#include "workspace/staleness.h"

namespace qmx {
namespace {

/// Where the window of a result's first matrix is; nothing for numbers and verdicts.
std::optional<Slot> SlotOf(Result result) {
  return InfoOf(result).HasMatrices() ? std::optional(InfoOf(result).firstSlot) : std::nullopt;
}

DocumentTexts TextsOfSteps(Result result) {
  return {.name = "frmSteps",
          .title = QObject::tr("Steps: %1").arg(ToQString(DerivationTitle(result))),
          .renew = QObject::tr("Shows how the present result came about"),
          .working = QObject::tr("The steps are being derived..."),
          .done = QObject::tr("The steps are there"),
          .none = QObject::tr("There are no steps of this."),
          .noMemory = QObject::tr("There is not enough memory for the steps."),
          .notPrinted = QObject::tr("The steps could not be printed.")};
}

}  // namespace

Steps::Steps(const Workspace& workspace, frmQMX& main, DesktopScreen& screen,
             CommandRunner& commands, const Deriver* deriver, const Settle& settle)
    : workspace_(workspace),
      main_(main),
      screen_(screen),
      commands_(commands),
      deriver_(deriver),
      menu_(main.findChild<QMenu*>("mnuSteps")) {
  WireScalars();
  menu_->menuAction()->setVisible(deriver_ != nullptr);
  for (const ResultInfo& info : kResults) {
    if (deriver_ == nullptr || !HasDerivation(info.result)) continue;
    AddEntry(info.result);
    AddDocument(info.result, settle);
  }
}

void Steps::WireScalars() {
  scalars_ = main_.findChildren<StepsButton*>();
  for (StepsButton* button : scalars_) {
    button->setVisible(deriver_ != nullptr);
    connect(button, &QPushButton::clicked, this, [this, result = button->Of()] { Show(result); });
  }
}

void Steps::AddEntry(Result result) {
  QAction* entry = menu_->addAction(ToQString(DerivationTitle(result)));
  entry->setObjectName("mnuSteps_" + QString::number(result));
  connect(entry, &QAction::triggered, this, [this, result] { Show(result); });
  shown_[result].entry = entry;
}

void Steps::AddDocument(Result result, const Settle& settle) {
  auto document = std::make_unique<DerivedDocument>(
      TextsOfSteps(result), commands_, runs_,
      [settle, result](DocumentWindow& window) { settle(window, SlotOf(result)); });
  connect(document.get(), &DerivedDocument::RenewAsked, this, [this, result] { Show(result); });
  connect(document.get(), &DerivedDocument::Gone, this,
          [this, result] { shown_[result].subject = {}; });
  shown_[result].document = std::move(document);
}

void Steps::Attach(GridWindow& window) {
  const Result result = ResultOf(window.Slot()).result;
  if (deriver_ == nullptr || !HasDerivation(result)) return;
  auto* button = new StepsButton(result, "cmdSteps", &window);
  window.AddToLowerLine(*button);
  connect(button, &QPushButton::clicked, this, [this, result] { Show(result); });
  buttons_[window.Slot()] = button;
}

void Steps::Enable() {
  bool isAny = false;
  for (const ResultInfo& info : kResults) {
    QAction* entry = shown_[info.result].entry;
    if (entry == nullptr) continue;
    const QString why = ToQString(WhyNoSteps(workspace_, info.result));
    entry->setVisible(workspace_.*info.flag);
    entry->setEnabled(why.isEmpty());
    entry->setToolTip(why.isEmpty() ? tr("Shows how this came about") : why);
    isAny = isAny || entry->isVisible();
    ForEachSlot(info, [&](Slot slot) {
      if (buttons_[slot] != nullptr) buttons_[slot]->Enable(why);
    });
  }
  for (StepsButton* button : scalars_)
    button->Enable(ToQString(WhyNoSteps(workspace_, button->Of())));
  menu_->menuAction()->setEnabled(isAny);
}

std::string Steps::Note(Result result) const {
  const std::string name(InfoOf(result).name);
  if (!(workspace_.*InfoOf(result).flag))
    return "These are the steps of a result that is not there any more.";
  if (workspace_.computations[result] != shown_[result].subject.of)
    return "These are the steps of another result: " + name + " on show is not this one.";
  const std::string stale = ShortStaleness(workspace_, result);
  return stale.empty() ? stale : stale + " these steps were made.";
}

void Steps::AfterCommand() {
  if (deriver_ == nullptr) return;
  Enable();
  for (const ResultInfo& info : kResults) {
    if (DocumentWindow* window = Window(info.result))
      window->ShowNote(ToQString(Note(info.result)), WhyNoSteps(workspace_, info.result).empty());
  }
}

Steps::Subject Steps::SubjectOf(Result result) const {
  Subject subject{workspace_.computations[result]};
  const std::optional<Slot> slot = SlotOf(result);
  const GridWindow* window = slot ? screen_.Window(*slot) : nullptr;
  if (window == nullptr || !IsAboutElement(workspace_, result)) return subject;
  const MatrixGrid& grid = window->Grid();
  if (!grid.HasCurrentCell()) return subject;
  subject.row = grid.Row() + 1 - grid.Model().HeaderRows();
  subject.col = grid.Col();
  return subject;
}

void Steps::Show(Result result) {
  if (deriver_ == nullptr || !WhyNoSteps(workspace_, result).empty()) return;
  // While something is computed the results may not be what they were.
  if (commands_.IsBusy()) return commands_.Refuse();
  Shown& shown = shown_[result];
  const Subject subject = SubjectOf(result);
  if (!shown.document->IsThere() || shown.subject != subject) Derive(result, subject);
  shown.document->BringToFront();
}

void Steps::Derive(Result result, const Subject& subject) {
  shown_[result].document->Derive([&]() -> DerivedDocument::Make {
    shown_[result].subject = subject;
    auto question = std::make_shared<const DerivationQuestion>(
        StepsQuestion(workspace_, result, subject.row, subject.col));
    return [deriver = deriver_, question](const DerivationLook& look) {
      return deriver->Derive(*question, look);
    };
  });
}

void Steps::CloseAll() {
  runs_.StopAll();
  for (Shown& shown : shown_) {
    if (shown.document != nullptr) shown.document->Close();
  }
}

}  // namespace qmx
