// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <memory>
#include <string>

#include "workspace/dialogs.h"

namespace qmx {

class HelpWindow;

/// The program's help. As an event filter of the application it opens, on F1, the page of the
/// window one is in: the page named after the window's object name.
class Help : public QObject {
 public:
  /// `file` is the compiled help file; `dialogs` tell the user if it cannot be opened.
  Help(Dialogs& dialogs, std::string file);
  ~Help() override;

  /// Opens the help at its contents.
  void ShowContents();
  /// Opens the page of a topic, such as "frmA", or the contents where there is no such page.
  void ShowHelp(const QString& topic);
  /// Opens the page of the window that is active.
  void ShowWindowHelp();
  /// Closes the help window, as the program ends.
  void Close();

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Dialogs& dialogs_;
  std::string file_;
  std::unique_ptr<HelpWindow> window_;
};

}  // namespace qmx
