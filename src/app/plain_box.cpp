// SPDX-License-Identifier: MIT
#include "app/plain_box.h"

#include "grids/qt_text.h"
#include "workspace/dialogs.h"

namespace qmx {

int ShowBox(QMessageBox::Icon icon, const QString& text, QMessageBox::StandardButtons buttons,
            QWidget* parent) {
  QMessageBox box(icon, ToQString(kProgramTitle), text, buttons, parent);
  box.setTextFormat(Qt::PlainText);
  if (buttons.testFlag(QMessageBox::No)) box.setDefaultButton(QMessageBox::No);
  return box.exec();
}

void Complain(QWidget& window, const QString& what) {
  ShowBox(QMessageBox::Critical, what, QMessageBox::Ok, &window);
}

}  // namespace qmx
