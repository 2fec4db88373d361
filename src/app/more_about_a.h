// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include "app/derived_document.h"
#include "app/frm_qmx.h"

namespace qmx {

/// What is known of A beside the results: a window with its rank, reduced row echelon form, null
/// space, condition numbers and all eigenvalues, each with its steps. It is no task: it computes
/// beside the windows, and nothing of it is in the Workspace, in a project or a step of undo. The
/// window keeps its document when A changes, says so, and makes a new one when it is asked to.
class MoreAboutA : public QObject {
  Q_OBJECT

 public:
  /// Without a deriver there is no entry and no window.
  MoreAboutA(const Workspace& workspace, frmQMX& main, CommandRunner& commands,
             const Deriver* deriver, DerivedDocument::Settle settle);
  ~MoreAboutA() override { Close(); }

  /// Something may have changed in the Workspace.
  void AfterCommand();
  /// Shows the window, unless there is no A or something is being computed.
  void Show();
  /// Closes the window and computes nothing any more.
  void Close();

  /// Null while there is none.
  DocumentWindow* Window() const { return document_.Window(); }
  BackgroundRuns& Runs() { return runs_; }

 private:
  void Derive();
  bool IsCurrent() const;
  QString Note() const;

  const Workspace& workspace_;
  frmQMX& main_;
  CommandRunner& commands_;
  const Deriver* deriver_;
  BackgroundRuns runs_;
  DerivedDocument document_;
  std::shared_ptr<const Matrix> of_;  ///< A when the document was asked for.
};

}  // namespace qmx
