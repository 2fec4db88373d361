// SPDX-License-Identifier: MIT
#include "app/window_placement.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QRegion>
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
    Surroundings around{mainFrame, taskArea, {}, owner};
    for (const QWidget* other : shown) around.others.push_back(other->frameGeometry());
    PlaceBeside(around, *window, 300);
    shown.push_back(window.get());
    windows.push_back(std::move(window));
    return *windows.back();
  }
  QRect Screen() const { return windows.front()->screen()->availableGeometry(); }

  QRect mainFrame{0, 0, 700, 600};
  QRect taskArea{200, 0, 200, 600};
  std::optional<QRect> owner;
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

/// The part of a window that no other one covers, as a share of it.
double InSight(const QWidget& window, const std::vector<QWidget*>& above) {
  QRegion seen(window.frameGeometry());
  for (const QWidget* other : above) seen -= other->frameGeometry();
  double area = 0;
  for (const QRect& rect : seen) area += static_cast<double>(rect.width()) * rect.height();
  return area / (static_cast<double>(window.width()) * window.height());
}

TEST_F(Placement, OfManyWindowsAPartOfEachStaysInSight) {
  mainFrame = {0, 0, 822, 700};
  taskArea = {290, 40, 250, 620};
  for (int count = 0; count < 18; ++count) Add({300, 190});
  for (std::size_t i = 0; i < shown.size(); ++i) {
    EXPECT_TRUE(Screen().contains(shown[i]->geometry()));
    EXPECT_FALSE(mainFrame.contains(shown[i]->frameGeometry()));
    const std::vector<QWidget*> above(shown.begin() + static_cast<int>(i) + 1, shown.end());
    EXPECT_GT(InSight(*shown[i], above), 0.05) << i;
  }
}

TEST_F(Placement, AMainWindowThatTakesNearlyAllLeavesAPartOfEachInSight) {
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  mainFrame = screen.adjusted(0, 0, -120, -20);
  taskArea = {400, 40, 350, 700};
  for (int count = 0; count < 18; ++count) {
    const QRect frame = Add({300, 190}).frameGeometry();
    EXPECT_TRUE(screen.contains(frame));
    EXPECT_GE(frame.right() - mainFrame.right(), 80) << count;
    EXPECT_FALSE(frame.intersects(taskArea)) << count;
  }
}

TEST_F(Placement, AWindowWithoutRoomOpensCloseToTheOneItBelongsTo) {
  mainFrame = {0, 0, 822, 700};
  taskArea = {290, 40, 250, 620};
  for (int count = 0; count < 8; ++count) Add({260, 160});
  for (const QWidget* belongsTo : {shown[0], shown[3], shown[6]}) {
    owner = belongsTo->frameGeometry();
    const QPoint way = Add({260, 160}).frameGeometry().center() - owner->center();
    EXPECT_LT(way.manhattanLength(), 420);
    EXPECT_GT(InSight(*belongsTo, {shown.back()}), 0.5);
    shown.pop_back();
  }
}

}  // namespace
}  // namespace qmx::test
