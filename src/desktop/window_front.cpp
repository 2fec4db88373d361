// SPDX-License-Identifier: MIT
#include "desktop/window_front.h"

namespace qmx {

void BringToFront(QWidget& window) {
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
  window.activateWindow();
}

}  // namespace qmx
