// SPDX-License-Identifier: MIT
#include "desktop/help_window.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QLineEdit>
#include <QListWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTextBlock>
#include <QTreeWidget>

#include "desktop/help.h"
#include "support/core_screen.h"

namespace qmx::test {
namespace {

QWidget* FindWindow(const char* name) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->objectName() == name) return window;
  }
  return nullptr;
}

class HelpWindowTest : public testing::Test {
 protected:
  HelpWindowTest() : help_(screen_, QMX_HELP_FILE) {}

  HelpWindow& Open() {
    help_.ShowContents();
    EXPECT_TRUE(QTest::qWaitForWindowActive(FindWindow("frmHelp")));
    return *static_cast<HelpWindow*>(FindWindow("frmHelp"));
  }
  template <typename T>
  T& Part(const char* name) {
    T* part = FindWindow("frmHelp")->findChild<T*>(name);
    EXPECT_NE(part, nullptr) << name;
    return *part;
  }
  QString Heading() { return Part<QTextBrowser>("txtPage").document()->begin().text(); }

  RecordingScreen screen_;
  Help help_;
};

TEST_F(HelpWindowTest, OpensAtItsContents) {
  Open();
  EXPECT_TRUE(FindWindow("frmHelp")->isVisible());
  EXPECT_EQ(Part<QTabWidget>("tabHelp").currentIndex(), 0);
  EXPECT_EQ(Part<QTreeWidget>("lstContents").currentItem()->text(0), "Orvane");
  EXPECT_EQ(Heading(), "Orvane");
  EXPECT_TRUE(screen_.messages.empty());
}

TEST_F(HelpWindowTest, ContentsAreReadWithTheKeyboard) {
  Open();
  auto& contents = Part<QTreeWidget>("lstContents");
  contents.setFocus();
  QTest::keyClick(&contents, Qt::Key_Down);
  QTest::keyClick(&contents, Qt::Key_Return);
  EXPECT_EQ(Heading(), "First steps");
}

TEST_F(HelpWindowTest, LinksLeadOnAndBackAndForwardFollow) {
  HelpWindow& window = Open();
  auto& page = Part<QTextBrowser>("txtPage");
  page.setFocus();
  QTest::keyClick(&page, Qt::Key_Tab);  // The first link of the page.
  QTest::keyClick(&page, Qt::Key_Return);
  EXPECT_EQ(Heading(), "First steps");
  EXPECT_EQ(Part<QTreeWidget>("lstContents").currentItem()->text(0), "First steps");
  QTest::keyClick(&window, Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(Heading(), "Orvane");
  QTest::keyClick(&window, Qt::Key_Right, Qt::AltModifier);
  EXPECT_EQ(Heading(), "First steps");
  QTest::keyClick(&window, Qt::Key_Home, Qt::AltModifier);
  EXPECT_EQ(Heading(), "Orvane");
}

TEST_F(HelpWindowTest, IndexNarrowsToWhatIsTyped) {
  Open();
  Part<QTabWidget>("tabHelp").setCurrentIndex(1);
  auto& words = Part<QListWidget>("lstIndex");
  const int all = words.count();
  EXPECT_GT(all, 100);
  auto& keyword = Part<QLineEdit>("txtKeyword");
  QTest::keyClicks(&keyword, "COFA");
  ASSERT_EQ(words.count(), 1);
  EXPECT_EQ(words.item(0)->text(), "cofactors");
  QTest::keyClick(&keyword, Qt::Key_Return);
  EXPECT_EQ(Heading(), "Adjoint(A)");
  keyword.clear();
  EXPECT_EQ(words.count(), all);
}

TEST_F(HelpWindowTest, SearchOpensWithItsShortcutAndFindsPages) {
  HelpWindow& window = Open();
  QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
  EXPECT_EQ(Part<QTabWidget>("tabHelp").currentIndex(), 2);
  auto& query = Part<QLineEdit>("txtSearch");
  QTest::keyClicks(&query, "normal equations");
  auto& found = Part<QListWidget>("lstFound");
  ASSERT_GT(found.count(), 0);
  QTest::keyClick(&query, Qt::Key_Return);
  EXPECT_EQ(Heading(), found.item(0)->text());
  QTest::keyClicks(&query, " xyzzy");
  EXPECT_EQ(found.count(), 0);
}

TEST_F(HelpWindowTest, ATabChosenByItsLetterIsTypedIntoAtOnce) {
  HelpWindow& window = Open();
  Part<QTreeWidget>("lstContents").setFocus();
  QTest::keyClick(&window, Qt::Key_I, Qt::AltModifier);
  EXPECT_EQ(QApplication::focusWidget(), &Part<QLineEdit>("txtKeyword"));
  Part<QListWidget>("lstIndex").setFocus();
  QTest::keyClick(&window, Qt::Key_C, Qt::AltModifier);
  Part<QTextBrowser>("txtPage").setFocus();
  QTest::keyClick(&window, Qt::Key_I, Qt::AltModifier);
  EXPECT_EQ(QApplication::focusWidget(), &Part<QLineEdit>("txtKeyword"));
  QTest::keyClick(&window, Qt::Key_S, Qt::AltModifier);
  EXPECT_EQ(QApplication::focusWidget(), &Part<QLineEdit>("txtSearch"));
}

TEST_F(HelpWindowTest, ArrowKeysStayAmongTheTabs) {
  Open();
  auto* tabs = Part<QTabWidget>("tabHelp").tabBar();
  tabs->setFocus();
  QTest::keyClick(tabs, Qt::Key_Right);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
  EXPECT_EQ(tabs->currentIndex(), 2);
  EXPECT_EQ(QApplication::focusWidget(), tabs);
}

TEST_F(HelpWindowTest, TopicOpensItsPageAndAnUnknownOneTheContents) {
  help_.ShowHelp("frmInverse");
  EXPECT_EQ(Heading(), "Window: Inverse of A");
  help_.ShowHelp("frmNoSuchWindow");
  EXPECT_EQ(Heading(), "Orvane");
}

TEST_F(HelpWindowTest, F1OpensThePageOfTheWindowOneIsIn) {
  qApp->installEventFilter(&help_);
  QWidget editor;
  editor.setObjectName("frmA");
  QLineEdit field(&editor);
  editor.show();
  editor.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
  QTest::keyClick(&field, Qt::Key_F1);
  EXPECT_EQ(Heading(), "Window: Matrix A");
  ASSERT_TRUE(QTest::qWaitForWindowActive(FindWindow("frmHelp")));
  QTest::keyClick(&Part<QTextBrowser>("txtPage"), Qt::Key_F1);
  EXPECT_EQ(Heading(), "The help window");
}

TEST_F(HelpWindowTest, EscapeClosesAndTheNextCallShowsItAgain) {
  HelpWindow& window = Open();
  QTest::keyClick(&window, Qt::Key_Escape);
  EXPECT_FALSE(window.isVisible());
  EXPECT_EQ(&Open(), &window);
  EXPECT_TRUE(window.isVisible());
}

TEST_F(HelpWindowTest, EveryPageShowsSomethingUnderItsHeading) {
  HelpWindow& window = Open();
  for (const HelpHeading& heading : window.Book().Contents()) {
    if (heading.page.empty()) continue;
    window.ShowPage(QString::fromStdString(heading.page));
    EXPECT_EQ(Heading().toStdString(), window.Book().TitleOf(heading.page));
    EXPECT_GE(Part<QTextBrowser>("txtPage").document()->blockCount(), 2) << heading.page;
  }
}

TEST(HelpMissing, GivesAPlainMessageAndNoWindow) {
  RecordingScreen screen;
  Help help(screen, "/no/such/folder/qmx.chm");
  help.ShowContents();
  EXPECT_EQ(screen.LastMessage(),
            "The help file is missing or cannot be read:\r/no/such/folder/qmx.chm");
  EXPECT_EQ(FindWindow("frmHelp"), nullptr);
}

}  // namespace
}  // namespace qmx::test
