// SPDX-License-Identifier: MIT
// The parts of the screen that wait for the user.

#include <QApplication>
#include <QMessageBox>

#include "app/desktop_screen.h"
#include "app/file_dialog.h"
#include "desktop/window_front.h"
#include "grids/qt_text.h"

namespace qmx {
namespace {

QMessageBox::StandardButtons ToStandard(Buttons buttons) {
  return buttons == Buttons::kOk ? QMessageBox::Ok
                                 : QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
}

Answer ToAnswer(int pressed) {
  switch (pressed) {
    case QMessageBox::Yes:
      return Answer::kYes;
    case QMessageBox::No:
      return Answer::kNo;
    case QMessageBox::Cancel:
      return Answer::kCancel;
    default:
      return Answer::kOk;
  }
}

}  // namespace

void DesktopScreen::Beep() { QApplication::beep(); }

void DesktopScreen::LetWindowsPaint() {
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

QWidget& DesktopScreen::FrontWindow() const { return qmx::FrontWindow(main_); }

Answer DesktopScreen::ShowMessage(const Message& message) {
  QMessageBox box(&FrontWindow());
  box.setWindowTitle(QString::fromStdString(message.title));
  box.setTextFormat(Qt::PlainText);
  box.setText(QString::fromStdString(message.text).replace('\r', '\n'));
  const bool isCritical = message.icon == Icon::kCritical;
  box.setIcon(isCritical ? QMessageBox::Critical : QMessageBox::NoIcon);
  // Who cannot see the icon is told the kind of the box.
  box.setAccessibleDescription(isCritical ? QObject::tr("Critical message")
                                          : QObject::tr("Message"));
  box.setStandardButtons(ToStandard(message.buttons));
  return ToAnswer(box.exec());
}

std::string DesktopScreen::AskOpenFile(const std::string& name, std::string_view ending) {
  FileDialog dialog(QFileDialog::AcceptOpen, ToQString(ending), &FrontWindow());
  dialog.Propose(ToQString(name));
  return dialog.Ask().toStdString();
}

std::string DesktopScreen::AskSaveFile(std::string_view ending) {
  FileDialog dialog(QFileDialog::AcceptSave, ToQString(ending), &FrontWindow());
  return dialog.Ask().toStdString();
}

bool DesktopScreen::MayReplace(const std::string& name) {
  return MayReplaceFile(name, &FrontWindow());
}

}  // namespace qmx
