// SPDX-License-Identifier: MIT
#include "app/more_about_a.h"

#include <QAction>
#include <QPushButton>
#include <utility>

#include "app/document_output.h"
#include "app/kept_form.h"

namespace qmx {

MoreAboutA::MoreAboutA(const Workspace& workspace, frmQMX& main, CommandRunner& commands,
                       const Deriver* deriver, Settle settle)
    : workspace_(workspace),
      main_(main),
      commands_(commands),
      deriver_(deriver),
      settle_(std::move(settle)) {
  QAction* entry = main_.Action("mnuMoreAboutA");
  entry->setVisible(deriver_ != nullptr);
  entry->setEnabled(false);
  connect(entry, &QAction::triggered, this, &MoreAboutA::Show);
}

void MoreAboutA::AfterCommand() {
  if (deriver_ == nullptr) return;
  QAction* entry = main_.Action("mnuMoreAboutA");
  entry->setEnabled(workspace_.ACreated);
  entry->setToolTip(workspace_.ACreated ? tr("Rank, reduced form, null space, condition number and "
                                             "all eigenvalues of A")
                                        : tr("There is no A"));
  if (window_ != nullptr) window_->ShowNote(Note(), workspace_.ACreated);
}

bool MoreAboutA::IsCurrent() const {
  return workspace_.ACreated && of_ != nullptr && workspace_.At(kSlotA).array == *of_;
}

QString MoreAboutA::Note() const {
  if (IsCurrent()) return {};
  return workspace_.ACreated ? tr("A has changed since this was found.")
                             : tr("This is about a matrix that is not there any more.");
}

DocumentWindow& MoreAboutA::Make() {
  auto* window = new DocumentWindow("frmMoreAboutA", tr("More about A"));
  window_ = window;
  window->SetForm(KeptForm());
  connect(window, &DocumentWindow::FormChosen, this, &KeepForm);
  connect(window, &DocumentWindow::RenewAsked, this, &MoreAboutA::Show);
  connect(window, &DocumentWindow::PrintAsked, window, [window] { PrintDocument(*window); });
  connect(window, &DocumentWindow::PdfAsked, window,
          [this, window] { SaveDocument(*window, commands_); });
  // Nobody waits any more for what is being found.
  connect(window, &QObject::destroyed, this, [this] {
    run_.reset();
    of_.reset();
  });
  window->findChild<QPushButton*>("cmdRenew")->setToolTip(tr("Looks into A as it is now"));
  window->adjustSize();
  settle_(*window);
  return *window;
}

void MoreAboutA::Show() {
  if (deriver_ == nullptr || commands_.IsBusy() || !workspace_.ACreated) return;
  // One that was closed goes at the next turn of the loop.
  if (window_ != nullptr && window_->isHidden()) {
    delete window_.data();
    window_.clear();
  }
  if (window_ == nullptr || !IsCurrent()) Derive();
  window_->setWindowState(window_->windowState() & ~Qt::WindowMinimized);
  window_->show();
  window_->raise();
  window_->activateWindow();
}

void MoreAboutA::Derive() {
  DocumentWindow& window = window_ == nullptr ? Make() : *window_;
  window.ShowNote({}, false);
  window.ShowWorking();
  of_ = std::make_shared<const Matrix>(workspace_.At(kSlotA).array.Shared());
  auto document = std::make_shared<Document>();
  run_ = runs_.Start(
      [this, matrix = of_, document](const DerivationLook& look) {
        *document = deriver_->MoreAbout(*matrix, look);
      },
      [shown = window_, document](DerivationRuns::End end) {
        if (end == DerivationRuns::End::kNoMemory)
          return shown->ShowFailure(tr("There is not enough memory for this."));
        shown->ShowDocument(document, tr("There is nothing to tell of this matrix."));
      });
}

void MoreAboutA::Close() {
  runs_.StopAll();
  delete window_.data();
}

}  // namespace qmx
