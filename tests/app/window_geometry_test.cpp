// SPDX-License-Identifier: MIT
#include "app/window_geometry.h"

#include <gtest/gtest.h>

namespace qmx::test {
namespace {

TEST(WindowGeometry, TilesFillTheAreaAndCoverNothingTwice) {
  const QRect area(100, 20, 1266, 740);
  for (int count = 1; count <= 20; ++count) {
    const QList<QRect> tiles = Tiles(area, count);
    ASSERT_EQ(tiles.size(), count);
    int covered = 0;
    for (const QRect& tile : tiles) {
      EXPECT_TRUE(area.contains(tile)) << count;
      covered += tile.width() * tile.height();
      for (const QRect& other : tiles) EXPECT_TRUE(&other == &tile || !other.intersects(tile));
    }
    EXPECT_EQ(covered, area.width() * area.height()) << count;
  }
}

TEST(WindowGeometry, TilesHaveTheShapeOfSheets) {
  // On a screen that lies on its side more of them stand side by side than above each other.
  const QList<QRect> tiles = Tiles({0, 0, 1366, 740}, 18);
  EXPECT_GE(tiles.front().width(), 200);
  EXPECT_GE(tiles.front().height(), 150);
  EXPECT_TRUE(Tiles({0, 0, 800, 600}, 0).isEmpty());
}

TEST(WindowGeometry, ACascadeShowsEveryTitle) {
  const QRect area(0, 0, 540, 740);
  const QList<QSize> sizes(18, QSize(300, 200));
  const QList<QRect> places = Cascade(area, sizes, 30);
  ASSERT_EQ(places.size(), 18);
  for (int i = 0; i < places.size(); ++i) {
    EXPECT_TRUE(area.contains(places[i])) << i;
    for (int j = 0; j < i; ++j) EXPECT_NE(places[i].topLeft(), places[j].topLeft()) << i << j;
  }
  EXPECT_EQ(places[1].topLeft(), QPoint(30, 30));
}

TEST(WindowGeometry, ACascadeMakesWhatIsTooLargeSmaller) {
  const QList<QRect> places = Cascade({10, 10, 400, 300}, {QSize(900, 200), QSize(100, 700)}, 30);
  for (const QRect& place : places) EXPECT_TRUE(QRect(10, 10, 400, 300).contains(place));
}

TEST(WindowGeometry, WhatWasPutOnALargerScreenComesBackOntoASmallerOne) {
  const QList<QRect> small{{0, 0, 1024, 600}};
  EXPECT_EQ(OntoScreen({1500, 900, 300, 200}, small), QRect(724, 400, 300, 200));
  EXPECT_EQ(OntoScreen({-50, -50, 300, 200}, small), QRect(0, 0, 300, 200));
  EXPECT_EQ(OntoScreen({100, 100, 1900, 1000}, small), QRect(0, 0, 1024, 600));
  EXPECT_EQ(OntoScreen({100, 120, 300, 200}, small), QRect(100, 120, 300, 200));
}

TEST(WindowGeometry, OfTwoScreensTheOneIsTakenThatHasMostOfTheWindow) {
  const QList<QRect> two{{0, 0, 1000, 800}, {1000, 0, 1920, 1080}};
  EXPECT_EQ(OntoScreen({900, 100, 400, 200}, two), QRect(1000, 100, 400, 200));
  EXPECT_EQ(OntoScreen({700, 100, 400, 200}, two), QRect(600, 100, 400, 200));
  EXPECT_EQ(OntoScreen({4000, 100, 400, 200}, two), QRect(2520, 100, 400, 200));
}

}  // namespace
}  // namespace qmx::test
