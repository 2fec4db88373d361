// SPDX-License-Identifier: MIT
#include "app/derived_document.h"

#include <utility>

#include "app/document_output.h"
#include "app/kept_form.h"
#include "desktop/window_front.h"

namespace qmx {

DerivedDocument::DerivedDocument(DocumentTexts texts, CommandRunner& commands, BackgroundRuns& runs,
                                 Settle settle)
    : texts_(std::move(texts)), commands_(commands), runs_(runs), settle_(std::move(settle)) {}

bool DerivedDocument::IsThere() const {
  return window_ != nullptr && !window_->isHidden() && !lackedMemory_;
}

void DerivedDocument::MakeWindow() {
  window_ = new DocumentWindow(texts_);
  DocumentWindow* window = window_.data();
  window->SetForm(KeptForm());
  connect(window, &DocumentWindow::FormChosen, this, &KeepForm);
  connect(window, &DocumentWindow::RenewAsked, this, &DerivedDocument::RenewAsked);
  connect(window, &DocumentWindow::PrintAsked, window, [window] { PrintDocument(*window); });
  connect(window, &DocumentWindow::PdfAsked, window,
          [this, window] { SaveDocument(*window, commands_); });
  // Nobody waits any more for what is being derived.
  connect(window, &QObject::destroyed, this, [this] {
    run_.reset();
    Q_EMIT Gone();
  });
  window->adjustSize();
  settle_(*window);
}

void DerivedDocument::Derive(const std::function<Make()>& prepare) {
  // One that was closed goes at the next turn of the loop.
  if (window_ != nullptr && window_->isHidden()) {
    Close();
    window_.clear();
  }
  if (window_ == nullptr) MakeWindow();
  lackedMemory_ = false;
  window_->ShowNote({}, false);
  window_->ShowWorking();
  auto document = std::make_shared<Document>();
  run_ = runs_.Start(
      [&prepare, document]() -> BackgroundRuns::Work {
        return [make = prepare(), document](const DerivationLook& look) { *document = make(look); };
      },
      [this, document](BackgroundRuns::End end) { Take(end, document); });
}

void DerivedDocument::Take(BackgroundRuns::End end, std::shared_ptr<const Document> document) {
  lackedMemory_ = end == BackgroundRuns::End::kNoMemory;
  lackedMemory_ ? window_->ShowNoMemory() : window_->ShowDocument(std::move(document));
}

void DerivedDocument::BringToFront() {
  if (window_ != nullptr) qmx::BringToFront(*window_);
}

}  // namespace qmx
