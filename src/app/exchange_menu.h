// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <array>

#include "app/desktop_foreign_dialogs.h"
#include "app/desktop_screen.h"
#include "app/print_table_dialog.h"
#include "commands/command_runner.h"

namespace qmx {

/// The ways of matrices into the program and out of it: the entries for import, export, pasting as
/// a matrix, copying in other forms and taking A and B as a system, and files that are dropped on
/// editors and on the frames of what is typed in.
class ExchangeMenu : public QObject {
  Q_OBJECT

 public:
  ExchangeMenu(frmQMX& window, DesktopScreen& screen, CommandRunner& commands);

  /// Enables what there is something for; to be called after every command.
  void Update(const Workspace& workspace);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void AddImport(QMenu* file, QAction* before);
  void AddExport(QMenu* file, QAction* before);
  void AddToEdit(QMenu* edit);
  void AcceptDrops();
  void Import(Slot target);
  /// Takes a file that was dropped once the drop is over, so that who began it need not wait.
  void TakeLater(Slot target, const QString& name);
  Q_INVOKABLE void TakeDropped();
  void PasteAsNew(Slot operand);
  void PasteOutsideFields();
  void CopyAs(CopyForm form);
  void PrintActiveTable();

  frmQMX& window_;
  DesktopScreen& screen_;
  CommandRunner& commands_;
  DesktopForeignDialogs dialogs_;
  DesktopPrintPreview preview_;
  std::array<QAction*, kSlotCount> exports_{};
  bool hasA_ = false;
  Slot dropTarget_ = kSlotA;
  std::string dropped_;          ///< In the system's bytes.
  QPointer<GridWindow> active_;  ///< The window of a matrix that had the keyboard last.
};

}  // namespace qmx
