// SPDX-License-Identifier: MIT
#pragma once

#include <QMessageBox>

namespace qmx {

/// Shows a box under the program's title whose text is shown as it is, whatever name of a file it
/// holds. Returns the button that was pressed; where it asks, that is No unless the user chooses.
int ShowBox(QMessageBox::Icon icon, const QString& text, QMessageBox::StandardButtons buttons,
            QWidget* parent);

/// Tells in such a box what has gone wrong.
void Complain(QWidget& window, const QString& what);

}  // namespace qmx
