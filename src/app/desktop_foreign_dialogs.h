// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include "commands/foreign_dialogs.h"

namespace qmx {

/// The real dialogs for the files of other programs.
class DesktopForeignDialogs : public ForeignDialogs {
 public:
  /// `mainWindow` is what a dialog belongs to where no other window is active.
  explicit DesktopForeignDialogs(QWidget& mainWindow);

  bool AskImport(ImportQuestion& question) override;
  bool AskExport(Slot slot, ForeignChoice& choice) override;
  std::optional<int> AskRightSide(int columns) override;

 private:
  QWidget& main_;
  ForeignChoice last_;  ///< The form that was exported last; at first the locale's.
};

}  // namespace qmx
