// SPDX-License-Identifier: MIT
#include "app/desktop_menu.h"

#include <QAction>
#include <QApplication>
#include <QIcon>

#include "base/file_path.h"
#include "desktop/file_association.h"
#include "desktop/system_help.h"
#include "grids/qt_text.h"

namespace qmx {
namespace {

/// A file that stands beside the executable.
std::string BesideProgram(const char* name) { return NameOf(PathOf(ProgramFolder()) / name); }

}  // namespace

DesktopMenu::DesktopMenu(frmQMX& window, Dialogs& dialogs)
    : help_(dialogs, BesideProgram("qmx.chm")) {
  QGuiApplication::setDesktopFileName("orvane");
  QApplication::setWindowIcon(QIcon(ToQString(BesideProgram("pi_data.ico"))));
  const auto choose = [&window](const char* entry, auto command) {
    QObject::connect(window.Action(entry), &QAction::triggered, &window, command);
  };
  choose("mnuAssociate", [] { AssociateProjectFiles(ProgramFolder()); });
  choose("mnuHelp", [this, &window] {
    if (!ShowSystemHelp(window.winId(), BesideProgram("qmx.chm"))) help_.ShowContents();
  });
  choose("mnuAbout", [this] { ShowAbout(frmAbout_); });
  choose("mnuWindowHelp", [this] { help_.ShowWindowHelp(); });
  qApp->installEventFilter(&help_);
}

void DesktopMenu::CloseWindows() {
  help_.Close();
  delete frmAbout_.data();
}

}  // namespace qmx
