// SPDX-License-Identifier: MIT
#include "app/desktop_menu.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTimer>

#include "app/program.h"
#include "desktop/fake_settings.h"
#include "support/core_ports.h"

namespace qmx::test {
namespace {

/// What a modal box looked like before its button was pressed.
struct SeenBox {
  QString title;
  QString text;
  QMessageBox::Icon icon = QMessageBox::NoIcon;
  QMessageBox::StandardButtons buttons;
};

class DesktopMenuTest : public testing::Test {
 protected:
  DesktopMenuTest() : program_({files_, printer_, random_, clock_, SystemMemory()}, settings_) {}

  /// Closing the main window asks the application to end; it must be able to wait again in the next
  /// test.
  void TearDown() override {
    QTimer::singleShot(0, qApp, &QCoreApplication::quit);
    QApplication::exec();
  }

  /// Presses a button of the next modal box.
  void AnswerNextBox(QMessageBox::StandardButton answer) {
    QTimer::singleShot(0, qApp, [this, answer] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      seen_ = {box->windowTitle(), box->text(), box->icon(), box->standardButtons()};
      QTest::mouseClick(box->button(answer), Qt::LeftButton);
    });
  }
  void Choose(const char* entry) { program_.MainWindow().Action(entry)->trigger(); }
  static QWidget* FindWindow(const char* name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->objectName() == name && window->isVisible()) return window;
    }
    return nullptr;
  }
  static QString HelpHeading() {
    QWidget* help = FindWindow("frmHelp");
    if (help == nullptr) return "no help window";
    return help->findChild<QTextBrowser*>("txtPage")->document()->begin().text();
  }

  MemoryFiles files_;
  RecordingPrinter printer_;
  FixedRandom random_;
  FixedClock clock_;
  FakeSettings settings_;
  Program program_;
  SeenBox seen_;
};

TEST_F(DesktopMenuTest, HelpOpensAtItsContentsAndEndsWithTheProgram) {
  ASSERT_TRUE(program_.Start(""));
  Choose("mnuHelp");
  EXPECT_EQ(HelpHeading(), "Orvane");
  program_.MainWindow().close();
  EXPECT_EQ(FindWindow("frmHelp"), nullptr);
}

TEST_F(DesktopMenuTest, F1OpensThePageOfTheWindowOneIsIn) {
  ASSERT_TRUE(program_.Start(""));
  frmQMX& window = program_.MainWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  QTest::keyClick(&window, Qt::Key_F1);
  EXPECT_EQ(HelpHeading(), "The main window");
  QTest::mouseClick(qobject_cast<QWidget*>(window.Find(cmdCreateA)), Qt::LeftButton);
  QWidget* frmA = FindWindow("frmA");
  ASSERT_NE(frmA, nullptr);
  frmA->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(frmA));
  QTest::keyClick(frmA, Qt::Key_F1);
  EXPECT_EQ(HelpHeading(), "Window: Matrix A");
}

TEST_F(DesktopMenuTest, AboutChosenTwicePrintsTwiceOnOneWindow) {
  ASSERT_TRUE(program_.Start(""));
  Choose("mnuAbout");
  Choose("mnuAbout");
  auto* about = static_cast<AboutWindow*>(FindWindow("frmAbout"));
  ASSERT_NE(about, nullptr);
  EXPECT_EQ(about->Lines().count("Orvane 2"), 2);
  program_.MainWindow().close();
  EXPECT_EQ(FindWindow("frmAbout"), nullptr);
}

TEST_F(DesktopMenuTest, AssociateRegistersThisProgram) {
  const QTemporaryDir home;
  for (const char* folder : {"XDG_DATA_HOME", "XDG_CONFIG_HOME"})
    qputenv(folder, home.path().toUtf8());
  ASSERT_TRUE(program_.Start(""));
  Choose("mnuAssociate");
  EXPECT_TRUE(QFile::exists(home.filePath("applications/orvane.desktop")));
  EXPECT_TRUE(QFile::exists(home.filePath("mimeapps.list")));
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(DesktopMenuTest, CommaAsksBeforeAnyWindowAndYesLastsUntilTheEnd) {
  settings_.separator = ",";
  AnswerNextBox(QMessageBox::Yes);
  ASSERT_TRUE(program_.Start(""));
  EXPECT_EQ(seen_.title, "Decimal Comma Warning!");
  EXPECT_EQ(seen_.icon, QMessageBox::Critical);
  EXPECT_EQ(seen_.buttons, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
  EXPECT_EQ(seen_.text.count('\n') + seen_.text.count('\r'), 7);
  EXPECT_EQ(settings_.separator, ".");
  program_.MainWindow().close();
  EXPECT_EQ(settings_.separator, ",");
}

TEST_F(DesktopMenuTest, CommaKeptEndsTheProgramBeforeItsWindow) {
  settings_.separator = ",";
  for (const auto answer : {QMessageBox::No, QMessageBox::Cancel}) {
    AnswerNextBox(answer);
    EXPECT_FALSE(program_.Start(""));
    EXPECT_FALSE(program_.MainWindow().isVisible());
    EXPECT_TRUE(settings_.written.empty());
  }
}

TEST_F(DesktopMenuTest, PointIsWrittenBackAtTheEnd) {
  ASSERT_TRUE(program_.Start(""));
  EXPECT_TRUE(settings_.written.empty());
  program_.MainWindow().close();
  EXPECT_EQ(settings_.written.size(), 1u);
  EXPECT_EQ(settings_.separator, ".");
}

}  // namespace
}  // namespace qmx::test
