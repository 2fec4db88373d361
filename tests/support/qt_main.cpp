// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

// Tests of windows need no display: the offscreen platform serves unless another one is asked for.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  // Settings and state of the program are those of nobody.
  const QTemporaryDir home;
  for (const char* folder : {"XDG_CONFIG_HOME", "XDG_STATE_HOME"})
    qputenv(folder, home.path().toUtf8());
  qputenv("LOCALAPPDATA", home.path().toUtf8());
  QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, home.path());
  // Where the system has no fonts for such a platform they are in a folder. Wine keeps the names of
  // Qt's own variables to itself.
  if (qEnvironmentVariableIsSet("QMX_TEST_FONTS"))
    qputenv("QT_QPA_FONTDIR", qgetenv("QMX_TEST_FONTS"));
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
