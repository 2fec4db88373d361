// SPDX-License-Identifier: MIT
#include "desktop/window_front.h"

#include <QApplication>

namespace qmx {

void BringToFront(QWidget& window) {
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
  window.activateWindow();
}

QWidget& FrontWindow(QWidget& mainWindow) {
  QWidget* active = QApplication::activeWindow();
  return active != nullptr ? *active : mainWindow;
}

}  // namespace qmx
