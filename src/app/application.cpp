// SPDX-License-Identifier: MIT
#include "app/application.h"

#include <new>

#include "app/system_palette.h"
#include "grids/qt_text.h"
#include "workspace/dialogs.h"

namespace qmx {
namespace {

int& OneArgument() {
  // QApplication keeps a reference to the count for the life of the program.
  static int count = 1;
  return count;
}

}  // namespace

Application::Application(char** argv) : QApplication(OneArgument(), argv) {
  // By this the desktop tells that the windows belong to the program's entry, however it was
  // started.
  setApplicationName(ToQString(kProgramTitle));
  // One style on all desktops; its colours come from the desktop's palette, light or dark.
  setStyle("Fusion");
  if (platformName() == "windows") MendSystemPalette();
}

bool Application::event(QEvent* event) {
  const bool handled = QApplication::event(event);
  if (event->type() == QEvent::ApplicationPaletteChange && platformName() == "windows")
    MendSystemPalette();
  return handled;
}

void Application::Guard(const std::function<void()>& part) {
  try {
    part();
  } catch (const RuntimeFault& fault) {
    handler_(fault.Number());
  } catch (const std::bad_alloc&) {
    handler_(Fault::kOutOfMemory);
  }
}

bool Application::notify(QObject* receiver, QEvent* event) {
  bool handled = false;
  Guard([&] { handled = QApplication::notify(receiver, event); });
  return handled;
}

}  // namespace qmx
