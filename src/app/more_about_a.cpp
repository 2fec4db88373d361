// SPDX-License-Identifier: MIT
#include "app/more_about_a.h"

#include <QAction>
#include <utility>

namespace qmx {
namespace {

DocumentTexts TextsOfFacts() {
  return {.name = "frmMoreAboutA",
          .title = QObject::tr("More about A"),
          .renew = QObject::tr("Looks into A as it is now"),
          .working = QObject::tr("The facts about A are being found..."),
          .done = QObject::tr("The facts about A are there"),
          .none = QObject::tr("There is nothing to tell of this matrix."),
          .noMemory = QObject::tr("There is not enough memory for this."),
          .notPrinted = QObject::tr("The facts about A could not be printed.")};
}

}  // namespace

MoreAboutA::MoreAboutA(const Workspace& workspace, frmQMX& main, CommandRunner& commands,
                       const Deriver* deriver, DerivedDocument::Settle settle)
    : workspace_(workspace),
      main_(main),
      commands_(commands),
      deriver_(deriver),
      document_(TextsOfFacts(), commands, runs_, std::move(settle)) {
  QAction* entry = main_.Action("mnuMoreAboutA");
  entry->setVisible(deriver_ != nullptr);
  entry->setEnabled(false);
  connect(entry, &QAction::triggered, this, &MoreAboutA::Show);
  connect(&document_, &DerivedDocument::RenewAsked, this, &MoreAboutA::Show);
  connect(&document_, &DerivedDocument::Gone, this, [this] { of_.reset(); });
}

void MoreAboutA::AfterCommand() {
  if (deriver_ == nullptr) return;
  QAction* entry = main_.Action("mnuMoreAboutA");
  entry->setEnabled(workspace_.ACreated);
  entry->setToolTip(workspace_.ACreated ? tr("Rank, reduced form, null space, condition number and "
                                             "all eigenvalues of A")
                                        : tr("There is no A"));
  if (Window() != nullptr) Window()->ShowNote(Note(), workspace_.ACreated);
}

bool MoreAboutA::IsCurrent() const {
  return workspace_.ACreated && of_ != nullptr && workspace_.At(kSlotA).array == *of_;
}

QString MoreAboutA::Note() const {
  if (IsCurrent()) return {};
  return workspace_.ACreated ? tr("A has changed since this was found.")
                             : tr("This is about a matrix that is not there any more.");
}

void MoreAboutA::Show() {
  if (deriver_ == nullptr || !workspace_.ACreated) return;
  if (commands_.IsBusy()) return commands_.Refuse();
  if (!document_.IsThere() || !IsCurrent()) Derive();
  document_.BringToFront();
}

void MoreAboutA::Derive() {
  document_.Derive([this]() -> DerivedDocument::Make {
    of_ = std::make_shared<const Matrix>(workspace_.At(kSlotA).array.Shared());
    return [deriver = deriver_, matrix = of_](const DerivationLook& look) {
      return deriver->MoreAbout(*matrix, look);
    };
  });
}

void MoreAboutA::Close() {
  runs_.StopAll();
  document_.Close();
}

}  // namespace qmx
