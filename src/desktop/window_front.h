// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace qmx {

/// Shows a window, which may be minimised or hidden, in front of the others and gives it the
/// keyboard.
void BringToFront(QWidget& window);

}  // namespace qmx
