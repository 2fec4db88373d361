// SPDX-License-Identifier: MIT
#include "app/window_placement.h"

#include <QScreen>
#include <QStyle>
#include <algorithm>
#include <limits>

namespace qmx {
namespace {

constexpr int kStep = 28;  // About the height of a title bar.
constexpr int kGap = 6;
constexpr int kTitle = 30;            // What a window's frame adds to its height,
constexpr int kEdges = 10;            // and to its width, about.
constexpr QSize kInSight(80, kStep);  // What is to be seen of a window beside the main one.

// What a place costs. A window of which nothing would be left in sight costs nearly 1.
constexpr double kCovered = 0.002;      // For each point of another window that is covered there,
constexpr double kOwner = 0.004;        // more of the one that the new window belongs to,
constexpr double kHidden = 0.02;        // and of the new one behind the main window.
constexpr double kFarFromOwner = 5e-4;  // For each pixel of the way.
constexpr double kSamePlace = 10;
constexpr double kTasks = 100;

/// Points spread over a window, that of its title standing closer: what is seen of it is counted in
/// them.
std::vector<QPoint> PointsOf(const QRect& rect) {
  constexpr int kAcross = 8;
  constexpr int kDown = 5;
  std::vector<QPoint> points;
  for (int i = 0; i < kAcross; ++i) {
    const int x = rect.left() + rect.width() * (2 * i + 1) / (2 * kAcross);
    for (const int y : {kStep / 4, kStep / 2, kStep * 3 / 4})
      points.emplace_back(x, rect.top() + y);
    const int room = rect.height() - kStep;
    for (int j = 0; j < kDown; ++j)
      points.emplace_back(x, rect.top() + kStep + room * (2 * j + 1) / (2 * kDown));
  }
  return points;
}

int CountIn(const QRect& rect, const std::vector<QPoint>& points) {
  return static_cast<int>(std::count_if(points.begin(), points.end(),
                                        [&](const QPoint& point) { return rect.contains(point); }));
}

/// What it costs that so many of a window's points are taken out of sight: the more, the fewer are
/// left.
double CostOfLosing(int lost, std::size_t seen) {
  const auto all = static_cast<double>(seen);
  return 1 / (1 + all - lost) - 1 / (1 + all);
}

/// The surroundings with what is seen of each window.
struct Scene {
  explicit Scene(const Surroundings& surroundings) : around(surroundings) {
    for (const QRect& other : around.others) {
      for (std::vector<QPoint>& points : seen)
        std::erase_if(points, [&](const QPoint& point) { return other.contains(point); });
      seen.push_back(PointsOf(other));
    }
    for (std::vector<QPoint>& points : seen)
      std::erase_if(points, [&](const QPoint& point) { return around.main.contains(point); });
  }

  const Surroundings& around;
  std::vector<std::vector<QPoint>> seen;  ///< Of the others, in their order.
};

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
std::optional<QPoint> FreePlaceAround(const Surroundings& around, const QRect& screen, QSize size) {
  std::vector<QRect> taken = around.others;
  taken.push_back(around.main);
  QRect beside = screen;
  beside.setLeft(around.main.right() + kGap);
  const auto place = FreePlace(beside, size, taken);
  return place ? place : FreePlace(screen, size, taken);
}

/// The lines at which a window may begin in one direction where nothing is free: beside and upon
/// what is there, a step away from it, and against the edges of the screen.
std::vector<int> CrowdedStarts(int first, int last, const std::vector<std::pair<int, int>>& spans) {
  std::vector<int> starts{first, last};
  for (int step = first; step < last; step += 2 * kStep) starts.push_back(step);
  for (const auto& [begin, end] : spans) {
    for (const int start : {begin, begin + kStep, end + 1}) starts.push_back(start);
  }
  for (int& start : starts) start = std::clamp(start, first, last);
  std::sort(starts.begin(), starts.end());
  starts.erase(std::unique(starts.begin(), starts.end()), starts.end());
  return starts;
}

/// True if the main window leaves enough of a rectangle in sight, on any of its sides.
bool IsInSight(const QRect& rect, const QRect& main) {
  const QRect covered = rect & main;
  if (covered.isEmpty()) return true;
  const int across = std::max(covered.left() - rect.left(), rect.right() - covered.right());
  const int down = std::max(covered.top() - rect.top(), rect.bottom() - covered.bottom());
  return across >= kInSight.width() || down >= kInSight.height();
}

/// What it costs to place a window there: the less, the better.
double CostOf(const QRect& rect, const Scene& scene) {
  const Surroundings& around = scene.around;
  const std::vector<QPoint> own = PointsOf(rect);
  const int hidden = CountIn(around.main, own);
  double cost = kHidden * hidden + CostOfLosing(hidden, own.size());
  if (rect.intersects(around.taskArea)) cost += kTasks;
  for (std::size_t i = 0; i < around.others.size(); ++i) {
    const int lost = CountIn(rect, scene.seen[i]);
    cost += kCovered * lost + CostOfLosing(lost, scene.seen[i].size());
    if (around.owner == around.others[i]) cost += kOwner * lost;
    const QPoint way = around.others[i].topLeft() - rect.topLeft();
    if (way.manhattanLength() < kStep) cost += kSamePlace;
  }
  if (!around.owner) return cost;
  return cost + kFarFromOwner * (rect.center() - around.owner->center()).manhattanLength();
}

/// The place with the least cost; where the main window leaves no other, one that it covers.
QPoint CrowdedPlace(const Surroundings& around, const QRect& screen, QSize size) {
  const Scene scene(around);
  std::vector<std::pair<int, int>> across{{around.main.left(), around.main.right()}};
  std::vector<std::pair<int, int>> down{{around.main.top(), around.main.bottom()}};
  for (const QRect& other : around.others) {
    across.emplace_back(other.left(), other.right());
    down.emplace_back(other.top(), other.bottom());
  }
  const int lastLeft = std::max(screen.left(), screen.right() + 1 - size.width());
  const int lastTop = std::max(screen.top(), screen.bottom() + 1 - size.height());
  const std::vector<int> tops = CrowdedStarts(screen.top(), lastTop, down);
  QPoint best(lastLeft, screen.top());
  double least = std::numeric_limits<double>::max();
  bool found = false;
  for (const int left : CrowdedStarts(screen.left(), lastLeft, across)) {
    for (const int top : tops) {
      const QRect rect({left, top}, size);
      const bool inSight = IsInSight(rect, around.main);
      if (found && !inSight) continue;
      const double cost = CostOf(rect, scene);
      if (cost >= least && !(inSight && !found)) continue;
      found = inSight;
      least = cost;
      best = rect.topLeft();
    }
  }
  return best;
}

}  // namespace

void PlaceBeside(const Surroundings& around, QWidget& window, int narrowest) {
  const QRect screen = window.screen()->availableGeometry();
  const QSize frame(kEdges, kTitle);
  if (const auto place = FreePlaceAround(around, screen, window.size() + frame))
    return window.move(*place);
  const int room = screen.right() - around.main.right() - kGap - kEdges;
  const int width = std::min(window.width(), room >= narrowest ? room : screen.width() - kEdges);
  if (width < window.width()) {
    const int bar = window.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    window.resize(width, window.height() + bar);
    if (const auto place = FreePlaceAround(around, screen, window.size() + frame))
      return window.move(*place);
  }
  window.resize(window.width(), std::min(window.height(), screen.height() - kTitle));
  window.move(CrowdedPlace(around, screen, window.size() + frame));
}

}  // namespace qmx
