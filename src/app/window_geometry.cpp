// SPDX-License-Identifier: MIT
#include "app/window_geometry.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace qmx {
namespace {

constexpr double kSheet = 1.4;  // Width by height.

/// How far a shape is from that of a sheet; 0 for one that has it.
double Distance(const QRect& area, int cols, int rows) {
  const double width = static_cast<double>(area.width()) / cols;
  const double height = static_cast<double>(area.height()) / rows;
  return std::abs(std::log(width / height / kSheet));
}

std::int64_t AreaOf(const QRect& rect) {
  return rect.isEmpty() ? 0 : std::int64_t{rect.width()} * rect.height();
}

/// The larger, the closer: the common area, or minus the way between two that have none.
std::int64_t Closeness(const QRect& wanted, const QRect& screen) {
  const QRect common = wanted & screen;
  if (!common.isEmpty()) return AreaOf(common);
  return -std::int64_t{(wanted.center() - screen.center()).manhattanLength()};
}

}  // namespace

QList<QRect> Tiles(const QRect& area, int count) {
  QList<QRect> tiles;
  if (count < 1) return tiles;
  int rows = 1;
  const auto colsOf = [count](int in) { return (count + in - 1) / in; };
  for (int tried = 2; tried <= count && area.height() / tried > 0; ++tried) {
    if (Distance(area, colsOf(tried), tried) < Distance(area, colsOf(rows), rows)) rows = tried;
  }
  int placed = 0;
  for (int row = 0; row < rows; ++row) {
    const int cols =
        (count - placed) / (rows - row) + ((count - placed) % (rows - row) > 0 ? 1 : 0);
    const int top = area.top() + area.height() * row / rows;
    const int bottom = area.top() + area.height() * (row + 1) / rows;
    for (int col = 0; col < cols; ++col) {
      const int left = area.left() + area.width() * col / cols;
      const int right = area.left() + area.width() * (col + 1) / cols;
      tiles.append(QRect(left, top, right - left, bottom - top));
    }
    placed += cols;
  }
  return tiles;
}

QList<QRect> Cascade(const QRect& area, const QList<QSize>& sizes, int step) {
  QList<QRect> places;
  QPoint corner = area.topLeft();
  int begun = 0;
  for (const QSize& wanted : sizes) {
    const QSize size = wanted.boundedTo(area.size());
    if (corner.y() + size.height() - 1 > area.bottom() && corner.y() > area.top())
      corner = {area.left() + ++begun * step, area.top()};
    // Against the right edge the steps go down alone.
    const int left = std::clamp(corner.x(), area.left(), area.right() + 1 - size.width());
    places.append(QRect({left, corner.y()}, size));
    corner += QPoint(step, step);
  }
  return places;
}

QRect OntoScreen(const QRect& wanted, const QList<QRect>& screens) {
  if (screens.isEmpty()) return wanted;
  const QRect screen =
      *std::max_element(screens.begin(), screens.end(), [&](const QRect& one, const QRect& other) {
        return Closeness(wanted, one) < Closeness(wanted, other);
      });
  QRect placed(wanted.topLeft(), wanted.size().boundedTo(screen.size()));
  placed.moveLeft(std::clamp(placed.left(), screen.left(), screen.right() + 1 - placed.width()));
  placed.moveTop(std::clamp(placed.top(), screen.top(), screen.bottom() + 1 - placed.height()));
  return placed;
}

}  // namespace qmx
