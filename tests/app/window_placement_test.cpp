// SPDX-License-Identifier: MIT
#include "app/window_placement.h"

#include <gtest/gtest.h>

#include <QScreen>
#include <memory>

namespace qmx::test {
namespace {

class Placement : public ::testing::Test {
 public:
  /// Places a new window of a size among those that were placed before.
  QWidget& Add(QSize size) {
    auto window = std::make_unique<QWidget>();
    window->resize(size);
    PlaceBeside(mainFrame, taskArea, shown, *window, 300);
    shown.push_back(window.get());
    windows.push_back(std::move(window));
    return *windows.back();
  }
  QRect Screen() const { return windows.front()->screen()->availableGeometry(); }

  QRect mainFrame{0, 0, 700, 600};
  QRect taskArea{200, 0, 200, 600};
  std::vector<QWidget*> shown;
  std::vector<std::unique_ptr<QWidget>> windows;
};

TEST_F(Placement, WindowsThatFitBesideTheMainOneCoverNothing) {
  for (int count = 0; count < 6; ++count) Add({250, 180});
  for (const QWidget* one : shown) {
    EXPECT_TRUE(Screen().contains(one->frameGeometry()));
    EXPECT_FALSE(one->frameGeometry().intersects(mainFrame));
    for (const QWidget* other : shown) {
      EXPECT_TRUE(one == other || !one->frameGeometry().intersects(other->frameGeometry()));
    }
  }
}

TEST_F(Placement, AClosedWindowLeavesItsPlace) {
  const QPoint first = Add({250, 180}).pos();
  Add({250, 180});
  shown.erase(shown.begin());
  EXPECT_EQ(Add({250, 120}).pos(), first);
}

TEST_F(Placement, AWindowTooWideForTheRoomIsMadeNarrowerRatherThanLaidOverAnother) {
  const QRect first = Add({400, 180}).frameGeometry();
  const QWidget& wide = Add({800, 300});
  EXPECT_FALSE(wide.frameGeometry().intersects(first));
  EXPECT_FALSE(wide.frameGeometry().intersects(mainFrame));
  EXPECT_LT(wide.width(), 800);
}

TEST_F(Placement, WindowsThatFitNowhereLeaveTheTasksFreeAndStepAside) {
  std::vector<QPoint> places;
  for (int count = 0; count < 12; ++count) {
    const QWidget& window = Add({800, 400});
    EXPECT_GT(window.x(), taskArea.right());
    EXPECT_TRUE(Screen().contains(window.geometry()));
    for (const QPoint& place : places) EXPECT_NE(window.pos(), place);
    places.push_back(window.pos());
  }
}

}  // namespace
}  // namespace qmx::test
