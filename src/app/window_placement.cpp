// SPDX-License-Identifier: MIT
#include "app/window_placement.h"

#include <QScreen>
#include <QStyle>
#include <algorithm>
#include <optional>

namespace qmx {
namespace {

constexpr int kStep = 28;  // About the height of a title bar.
constexpr int kGap = 6;
constexpr int kAmple = 400;  // With so much room beside it the main window is left free.
constexpr int kRoomBelow = 4;
constexpr int kTitle = 30;  // What a window's frame adds to its height,
constexpr int kEdges = 10;  // and to its width, about.

bool IsTaken(const QPoint& corner, const std::vector<QWidget*>& others) {
  return std::any_of(others.begin(), others.end(), [&](const QWidget* other) {
    return (other->pos() - corner).manhattanLength() < kStep;
  });
}

/// The places where a rectangle may begin in one direction: at the start of the room or after
/// something that is there.
template <typename EndOf>
std::vector<int> Starts(int first, const std::vector<QRect>& taken, EndOf endOf) {
  std::vector<int> starts{first};
  for (const QRect& rect : taken) starts.push_back(std::max(first, endOf(rect) + kGap));
  std::sort(starts.begin(), starts.end());
  return starts;
}

/// The leftmost place in a room, the topmost of these, where a window of a size covers no other.
std::optional<QPoint> FreePlace(const QRect& room, QSize size, const std::vector<QRect>& taken) {
  const auto fits = [&](const QRect& rect) {
    return room.contains(rect) && std::none_of(taken.begin(), taken.end(), [&](const QRect& other) {
             return other.intersects(rect);
           });
  };
  for (const int x : Starts(room.left(), taken, [](const QRect& rect) { return rect.right(); })) {
    for (const int y : Starts(room.top(), taken, [](const QRect& rect) { return rect.bottom(); })) {
      if (fits({{x, y}, size})) return QPoint(x, y);
    }
  }
  return {};
}

/// The same among windows: right of the main one, else anywhere around it.
std::optional<QPoint> FreePlaceAround(const QRect& mainFrame, const std::vector<QWidget*>& others,
                                      const QWidget& window) {
  const QRect screen = window.screen()->availableGeometry();
  std::vector<QRect> taken{mainFrame};
  for (const QWidget* other : others) taken.push_back(other->frameGeometry());
  QRect beside = screen;
  beside.setLeft(mainFrame.right() + kGap);
  const QSize size = window.size() + QSize(kEdges, kTitle);
  const auto place = FreePlace(beside, size, taken);
  return place ? place : FreePlace(screen, size, taken);
}

}  // namespace

void PlaceBeside(const QRect& mainFrame, const QRect& taskArea, const std::vector<QWidget*>& others,
                 QWidget& window, int narrowest) {
  if (const auto place = FreePlaceAround(mainFrame, others, window)) return window.move(*place);
  const QRect screen = window.screen()->availableGeometry();
  const int beside = mainFrame.right() + kGap;
  const int free = taskArea.right() + kGap;
  const bool isAmple = screen.right() - kGap - beside >= kAmple;
  const int room = screen.right() - kEdges - (isAmple ? beside : free);
  const int width = std::min(window.width(), std::max(room, narrowest));
  if (width < window.width()) {
    const int bar = window.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    window.resize(width, window.height() + bar);
    if (const auto place = FreePlaceAround(mainFrame, others, window)) return window.move(*place);
  }
  const int rightmost = screen.right() - width - kGap;
  const int wanted = std::min(beside, std::max(free, rightmost));
  // On the screen in any case, even where that covers the tasks.
  const int left = std::clamp(wanted, screen.left(), std::max(screen.left(), rightmost));
  const int lowest = std::max(screen.top(), screen.bottom() - window.height() - kTitle);
  // Low enough to leave the results' frames free, with room for a few more below it.
  const int top = isAmple ? screen.top() : std::max(screen.top(), lowest - kRoomBelow * kStep);
  QPoint corner(left, top);
  for (int tries = 0; IsTaken(corner, others) && tries < 40; ++tries) {
    corner += QPoint(0, kStep);
    if (corner.y() > lowest)
      corner = {std::max(std::min(free, left), corner.x() - kStep), top + kStep / 2};
  }
  window.move(corner);
}

}  // namespace qmx
