#include "app/window_placement.h"

#include <QScreen>
#include <QStyle>
#include <algorithm>

namespace qmx {
namespace {

constexpr int kStep = 28;  // About the height of a title bar.
constexpr int kGap = 6;
constexpr int kNarrowest = 300;  // What a small screen does not make a window narrower than.
constexpr int kRoomBelow = 4;
constexpr int kTitle = 30;  // What a window's frame adds to its height.

bool IsTaken(const QPoint& corner, const std::vector<QWidget*>& others) {
  return std::any_of(others.begin(), others.end(), [&](const QWidget* other) {
    return (other->pos() - corner).manhattanLength() < kStep;
  });
}

}  // namespace

void PlaceBeside(const QRect& mainFrame, const QRect& taskArea, const std::vector<QWidget*>& others,
                 QWidget& window) {
  const QRect screen = window.screen()->availableGeometry();
  const int beside = mainFrame.right() + kGap;
  const int free = taskArea.right() + kGap;
  const int width = std::min(window.width(), std::max(screen.right() - kGap - free, kNarrowest));
  if (width < window.width()) {
    const int bar = window.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    window.resize(width, window.height() + bar);
  }
  const int rightmost = screen.right() - width - kGap;
  const int wanted = std::min(beside, std::max(free, rightmost));
  // On the screen in any case, even where that covers the tasks.
  const int left = std::clamp(wanted, screen.left(), std::max(screen.left(), rightmost));
  const int lowest = std::max(screen.top(), screen.bottom() - window.height() - kTitle);
  // Low enough to leave the results' frames free, with room for a few more below it.
  const int top = std::max(screen.top(), lowest - kRoomBelow * kStep);
  QPoint corner(left, top);
  for (int tries = 0; IsTaken(corner, others) && tries < 40; ++tries) {
    corner += QPoint(0, kStep);
    if (corner.y() > lowest)
      corner = {std::max(std::min(free, left), corner.x() - kStep), top + kStep / 2};
  }
  window.move(corner);
}

}  // namespace qmx
