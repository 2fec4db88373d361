// SPDX-License-Identifier: MIT
#include "app/desktop_foreign_dialogs.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QSpinBox>
#include <utility>

#include "app/export_dialog.h"
#include "app/import_dialog.h"
#include "desktop/window_front.h"
#include "grids/qt_text.h"

namespace qmx {

DesktopForeignDialogs::DesktopForeignDialogs(QWidget& mainWindow) : main_(mainWindow) {
  if (QLocale::system().decimalPoint() != ",") return;
  last_.separator = ';';
  last_.decimalSign = ',';
}

bool DesktopForeignDialogs::AskImport(ImportQuestion& question) {
  ImportDialog dialog(question, &FrontWindow(main_));
  return dialog.exec() == QDialog::Accepted;
}

bool DesktopForeignDialogs::AskExport(Slot slot, ForeignChoice& choice) {
  std::string name = std::exchange(choice.name, {});
  choice = last_;
  choice.name = std::move(name);
  ExportDialog dialog(ToQString(InfoOf(slot).title), choice, &FrontWindow(main_));
  if (dialog.exec() != QDialog::Accepted) return false;
  choice = dialog.Choice();
  last_ = choice;
  return true;
}

std::optional<int> DesktopForeignDialogs::AskRightSide(int columns) {
  QDialog dialog(&FrontWindow(main_));
  dialog.setObjectName("frmIntoSystem");
  dialog.setWindowTitle(QObject::tr("Into System"));
  auto* form = new QFormLayout(&dialog);
  auto* column = new QSpinBox(&dialog);
  column->setObjectName("spnRightColumn");
  column->setRange(1, columns);
  form->addRow(QObject::tr("&Column of B that is the right-hand side (1 to %1):").arg(columns),
               column);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  buttons->button(QDialogButtonBox::Ok)->setObjectName("cmdIntoSystem");
  form->addRow(buttons);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  column->selectAll();
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return column->value();
}

}  // namespace qmx
