// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>
#include <QPointer>
#include <array>
#include <functional>
#include <memory>
#include <optional>

#include "app/derived_document.h"
#include "app/desktop_screen.h"
#include "app/frm_qmx.h"
#include "app/steps_button.h"
#include "commands/steps_question.h"

namespace qmx {

/// How results came about: a window with the derivation of each, opened from the windows of the
/// results, from beside the numbers and verdicts of the main window, and from the menu of the
/// tasks. A window keeps its document when its result changes, and says what has become of it.
class Steps : public QObject {
  Q_OBJECT

 public:
  /// Gives a new window its place on the screen and what all windows have.
  using Settle = std::function<void(DocumentWindow& window, std::optional<Slot> slot)>;

  /// Without a deriver there are no buttons, no entries and no windows.
  Steps(const Workspace& workspace, frmQMX& main, DesktopScreen& screen, CommandRunner& commands,
        const Deriver* deriver, const Settle& settle);
  ~Steps() override { CloseAll(); }

  /// Adds `cmdSteps` to the window of a result.
  void Attach(GridWindow& window);
  /// Something may have changed in the Workspace.
  void AfterCommand();
  /// Shows the steps of a result, unless something keeps them from being derived.
  void Show(Result result);
  /// Closes all windows and derives nothing any more.
  void CloseAll();

  /// The window of a result; null while there is none.
  DocumentWindow* Window(Result result) const {
    return shown_[result].document == nullptr ? nullptr : shown_[result].document->Window();
  }
  BackgroundRuns& Runs() { return runs_; }

 private:
  /// What a document tells of: the result, and the element of it where it is about one.
  struct Subject {
    std::shared_ptr<const Computation> of;
    int row = 0;
    int col = 0;
    bool operator==(const Subject&) const = default;
  };
  struct Shown {
    std::unique_ptr<DerivedDocument> document;  ///< Null where there is no derivation.
    Subject subject;
    QAction* entry = nullptr;  ///< Of the menu.
  };

  void WireScalars();
  void AddEntry(Result result);
  void AddDocument(Result result, const Settle& settle);
  Subject SubjectOf(Result result) const;
  void Derive(Result result, const Subject& subject);
  void Enable();
  std::string Note(Result result) const;

  const Workspace& workspace_;
  frmQMX& main_;
  DesktopScreen& screen_;
  CommandRunner& commands_;
  const Deriver* deriver_;
  BackgroundRuns runs_;
  QMenu* menu_;
  std::array<Shown, kResultCount> shown_;
  std::array<QPointer<StepsButton>, kSlotCount> buttons_;  ///< In the windows that there are.
  QList<StepsButton*> scalars_;
};

}  // namespace qmx
