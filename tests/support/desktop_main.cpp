// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QDir>
#include <QSettings>
#include <QTemporaryDir>

#include "app/application.h"
#include "support/core_folder.h"

// Tests of windows need no display: unless another platform is asked for, a screen of 1366 x 768
// that nobody sees serves.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  // Settings and state of the program are those of nobody.
  const QTemporaryDir home;
  for (const char* folder : {"XDG_CONFIG_HOME", "XDG_STATE_HOME"})
    qputenv(folder, home.path().toUtf8());
  qputenv("LOCALAPPDATA", home.path().toUtf8());
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, home.path());
  // A run that is to be killed leaves its state where another one finds it.
  if (qEnvironmentVariableIsSet("QMX_TEST_STATE")) {
    for (const char* folder : {"XDG_STATE_HOME", "LOCALAPPDATA"})
      qputenv(folder, qgetenv("QMX_TEST_STATE"));
  }
  // Where the system has no fonts for such a platform they are in a folder. Wine keeps the names of
  // Qt's own variables to itself.
  if (qEnvironmentVariableIsSet("QMX_TEST_FONTS"))
    qputenv("QT_QPA_FONTDIR", qgetenv("QMX_TEST_FONTS"));
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
    // A colon, such as that of a drive, would end the file's name.
    const QString screen = QDir::current().relativeFilePath(
        QString::fromStdString(qmx::test::SourceFolder() + "/tests/support/small_screen.json"));
    qputenv("QT_QPA_PLATFORM", ("offscreen:configfile=" + screen).toUtf8());
  }
  const qmx::Application application(argv);
  return RUN_ALL_TESTS();
}
