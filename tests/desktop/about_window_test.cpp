// SPDX-License-Identifier: MIT
#include "desktop/about_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

namespace qmx {
namespace {

const QStringList kPrinted{"", "", "", "Orvane 2", ""};

class AboutWindowTest : public testing::Test {
 protected:
  void TearDown() override { delete frmAbout_.data(); }
  QPushButton* Licences() { return frmAbout_->findChild<QPushButton*>("cmdLicences"); }
  /// The rows of pixels of the window that hold ink, above its button.
  int InkedRows() {
    const QRect printed(0, 0, frmAbout_->width(), Licences()->geometry().top() - 1);
    const QImage image = frmAbout_->grab(printed).toImage();
    int rows = 0;
    for (int y = 0; y < image.height(); ++y) {
      bool inked = false;
      for (int x = 0; x < image.width(); ++x) inked |= image.pixel(x, y) != image.pixel(0, 0);
      rows += inked ? 1 : 0;
    }
    return rows;
  }
  static LicencesWindow* FindLicences() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->objectName() == "frmLicences") return static_cast<LicencesWindow*>(window);
    }
    return nullptr;
  }
  QPointer<AboutWindow> frmAbout_;
};

TEST_F(AboutWindowTest, PrintsItsLinesOnAModelessWindow) {
  ShowAbout(frmAbout_);
  EXPECT_EQ(frmAbout_->objectName(), "frmAbout");
  EXPECT_TRUE(frmAbout_->isVisible());
  EXPECT_FALSE(frmAbout_->isModal());
  EXPECT_EQ(frmAbout_->Lines(), kPrinted);
  EXPECT_GT(InkedRows(), 5);
}

TEST_F(AboutWindowTest, SecondChoicePrintsBelowOnTheSameWindow) {
  ShowAbout(frmAbout_);
  const AboutWindow* first = frmAbout_;
  const int inked = InkedRows();
  ShowAbout(frmAbout_);
  EXPECT_EQ(frmAbout_, first);
  EXPECT_EQ(frmAbout_->Lines(), kPrinted + kPrinted);
  EXPECT_EQ(InkedRows(), 2 * inked);
  EXPECT_EQ(frmAbout_->accessibleName(), "Orvane 2 Orvane 2");
}

TEST_F(AboutWindowTest, ClickAnywhereUnloadsItAndTheNextOneIsFresh) {
  for (const QPoint where : {QPoint(1, 1), QPoint(60, 60)}) {
    ShowAbout(frmAbout_);
    EXPECT_EQ(frmAbout_->Lines(), kPrinted);
    QTest::mouseClick(frmAbout_, Qt::LeftButton, {}, where);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(frmAbout_, nullptr);
  }
}

TEST_F(AboutWindowTest, EscapeClosesItToo) {
  ShowAbout(frmAbout_);
  QTest::keyClick(frmAbout_, Qt::Key_Escape);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(frmAbout_, nullptr);
}

TEST_F(AboutWindowTest, ItsButtonOpensTheLicencesAndItStays) {
  ShowAbout(frmAbout_);
  QTest::mouseClick(Licences(), Qt::LeftButton);
  ASSERT_NE(frmAbout_, nullptr);
  ASSERT_NE(FindLicences(), nullptr);
  EXPECT_TRUE(FindLicences()->isVisible());
  EXPECT_TRUE(frmAbout_->isVisible());
}

TEST_F(AboutWindowTest, TheKeyboardReachesTheLicencesAndLeavesThem) {
  ShowAbout(frmAbout_);
  ASSERT_TRUE(QTest::qWaitForWindowActive(frmAbout_));
  EXPECT_TRUE(Licences()->hasFocus());
  QTest::keyClick(Licences(), Qt::Key_Return);
  const QPointer<LicencesWindow> window = FindLicences();
  ASSERT_NE(window, nullptr);
  ASSERT_TRUE(QTest::qWaitForWindowActive(window));
  EXPECT_TRUE(window->findChild<QPlainTextEdit*>("txtLicences")->hasFocus());
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(window, nullptr);
  EXPECT_NE(frmAbout_, nullptr);
}

TEST_F(AboutWindowTest, TheLicencesNameEveryLibraryAndGoWithTheWindow) {
  ShowAbout(frmAbout_);
  Licences()->click();
  const QPointer<LicencesWindow> window = FindLicences();
  ASSERT_NE(window, nullptr);
  Licences()->click();
  EXPECT_EQ(FindLicences(), window);
  const QString text = window->Text();
  for (const char* name : {"Qt 6", "FLINT", "Arb", "GMP", "MPFR", "libchm", "matio", "zlib",
                           "libstdc++", "mingw-w64", "MIT License", "WITHOUT WARRANTY OF ANY KIND"})
    EXPECT_TRUE(text.contains(name)) << name;
  frmAbout_->close();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(window, nullptr);
}

}  // namespace
}  // namespace qmx
