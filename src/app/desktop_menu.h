// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>

#include "app/frm_qmx.h"
#include "desktop/about_window.h"
#include "desktop/help.h"

namespace qmx {

/// The menu entries that tie the program to the desktop: file association, help and About, and the
/// windows that they open.
class DesktopMenu {
 public:
  DesktopMenu(frmQMX& window, Dialogs& dialogs);
  DesktopMenu(const DesktopMenu&) = delete;
  DesktopMenu& operator=(const DesktopMenu&) = delete;
  ~DesktopMenu() { CloseWindows(); }

  void CloseWindows();

 private:
  Help help_;
  QPointer<AboutWindow> frmAbout_;
};

}  // namespace qmx
