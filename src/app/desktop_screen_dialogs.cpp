// The parts of the screen that wait for the user.

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

#include "app/desktop_screen.h"
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

/// The dialog asks before it gives the name of a file that exists, but knows nothing of an ending
/// that is added to the name. True if there is nothing to ask or the user agrees.
bool MayBeWritten(const QString& name, const QString& ending, QWidget* parent) {
  if (name.isEmpty() || ending.isEmpty() || name.endsWith(ending)) return true;
  const QFileInfo file(name + ending);
  if (!file.exists()) return true;
  return QMessageBox::warning(parent, ToQString(kProgramTitle),
                              QObject::tr("%1 already exists. Replace it?").arg(file.fileName()),
                              QMessageBox::Yes | QMessageBox::No,
                              QMessageBox::No) == QMessageBox::Yes;
}

std::string NameInBytes(const QString& name) { return QFile::encodeName(name).toStdString(); }

}  // namespace

void DesktopScreen::Beep() { QApplication::beep(); }

void DesktopScreen::LetWindowsPaint() {
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

Answer DesktopScreen::ShowMessage(const Message& message) {
  QWidget* active = QApplication::activeWindow();
  QMessageBox box(active != nullptr ? active : &main_);
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

std::string DesktopScreen::AskOpenFile(const std::string& name) {
  const QString proposed = QFile::decodeName(QByteArray::fromStdString(name));
  return NameInBytes(QFileDialog::getOpenFileName(&main_, {}, proposed));
}

std::string DesktopScreen::AskSaveFile(std::string_view ending) {
  QString name;
  do {
    name = QFileDialog::getSaveFileName(&main_);
  } while (!MayBeWritten(name, ToQString(ending), &main_));
  return NameInBytes(name);
}

}  // namespace qmx
