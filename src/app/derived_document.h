// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <functional>

#include "app/background_runs.h"
#include "commands/command_runner.h"
#include "derivation/derivation.h"
#include "grids/document_window.h"

namespace qmx {

/// A window with a document that is derived beside the windows. It is made when it is first asked
/// for, with what all windows of documents have: the form of numbers that was chosen last, printing
/// and saving. Closing it gives up what is being derived.
class DerivedDocument : public QObject {
  Q_OBJECT

 public:
  /// Gives a new window its place on the screen and what all windows have.
  using Settle = std::function<void(DocumentWindow& window)>;
  /// Derives the document, on the worker; it owns what it reads.
  using Make = std::function<Document(const DerivationLook& look)>;

  DerivedDocument(DocumentTexts texts, CommandRunner& commands, BackgroundRuns& runs,
                  Settle settle);
  ~DerivedDocument() override { Close(); }

  /// Null while there is none.
  DocumentWindow* Window() const { return window_.data(); }
  /// True where the document is on show or on its way: neither before, nor once the window was
  /// closed, nor where there was no memory for it.
  bool IsThere() const;
  /// Has the document made that `prepare` tells, in place of the one that is there.
  void Derive(const std::function<Make()>& prepare);
  void BringToFront();
  void Close() { delete window_.data(); }

 Q_SIGNALS:
  /// The user wants the document of what there is now.
  void RenewAsked();
  /// The window was closed, and the document is gone with it.
  void Gone();

 private:
  void MakeWindow();
  void Take(BackgroundRuns::End end, std::shared_ptr<const Document> document);

  const DocumentTexts texts_;
  CommandRunner& commands_;
  BackgroundRuns& runs_;
  Settle settle_;
  QPointer<DocumentWindow> window_;
  BackgroundRuns::Ticket run_;
  bool lackedMemory_ = false;
};

}  // namespace qmx
