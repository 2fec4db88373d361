// SPDX-License-Identifier: MIT
#include "desktop/about_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>

namespace qmx {
namespace {

const QStringList kPrinted{"", "", "", "Orvane 2", ""};

class AboutWindowTest : public testing::Test {
 protected:
  void TearDown() override { delete frmAbout_.data(); }
  /// The rows of pixels of the window that hold ink.
  int InkedRows() {
    const QImage image = frmAbout_->grab().toImage();
    int rows = 0;
    for (int y = 0; y < image.height(); ++y) {
      bool inked = false;
      for (int x = 0; x < image.width(); ++x) inked |= image.pixel(x, y) != image.pixel(0, 0);
      rows += inked ? 1 : 0;
    }
    return rows;
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

}  // namespace
}  // namespace qmx
