// SPDX-License-Identifier: MIT
// Numbers as points on the real line.

#include <QFontMetricsF>
#include <QObject>
#include <algorithm>
#include <cmath>
#include <vector>

#include "base/number_text.h"
#include "grids/picture.h"
#include "output/number_line.h"
#include "output/picture_colours.h"

namespace qmx {
namespace {

constexpr double kPad = 12;
constexpr double kRadius = 5;
constexpr double kMarkLength = 5;

QString Number(double value) { return QString::fromStdString(CStrSingle(value)); }

class Points : public Picture {
 public:
  Points(const Matrix& matrix, const PictureStyle& style)
      : style_(style), metrics_(style.font), dark_(style.IsDark()) {
    for (int i = 1; i <= matrix.Rows(); ++i) points_.push_back({matrix(i, 1), i, {}});
    std::stable_sort(points_.begin(), points_.end(),
                     [](const Point& one, const Point& other) { return one.value < other.value; });
    std::vector<double> values;
    for (const Point& point : points_) values.push_back(point.value);
    const double widest = metrics_.horizontalAdvance(QStringLiteral("-8.888888E+38")) / 2 + kPad;
    left_ = widest;
    right_ = std::max(left_ + 1, style.size.width() - widest);
    base_ = std::max(kPad, style.size.height() - 2 * metrics_.height() - kPad);
    const double label = metrics_.horizontalAdvance(QStringLiteral("-8.8E+38")) + kPad;
    line_ = NumberLineFor(values, std::max(4, static_cast<int>((right_ - left_) / label) + 3));
    Place();
  }

  void Paint(QPainter& painter) const override {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(style_.font);
    const QColor ink = style_.palette.color(QPalette::WindowText);
    painter.setPen(ink);
    painter.drawLine(QPointF(left_ - kPad, base_), QPointF(right_ + kPad, base_));
    for (const double mark : line_.marks) PaintMark(painter, mark);
    painter.setPen(ink);
    for (const Point& point : points_) {
      const Rgb colour = PictureColour(Sign(point.value), 1.5, dark_);
      painter.setBrush(QColor(colour.red, colour.green, colour.blue));
      painter.drawEllipse(point.centre, kRadius, kRadius);
    }
  }

  std::optional<GridCell> ElementAt(const QPointF& place) const override {
    const Point* nearest = nullptr;
    double least = 2 * kRadius;
    for (const Point& point : points_) {
      const QPointF way = point.centre - place;
      const double distance = std::hypot(way.x(), way.y());
      if (distance >= least) continue;
      least = distance;
      nearest = &point;
    }
    if (nearest == nullptr) return std::nullopt;
    return GridCell{nearest->row, 1};
  }

  QRectF RectOf(const GridCell& element) const override {
    constexpr double kAround = kRadius + 3;
    const QPointF centre = points_[PlaceOf(element)].centre;
    return {centre.x() - kAround, centre.y() - kAround, 2 * kAround, 2 * kAround};
  }

  GridCell Next(const GridCell& from, int key) const override {
    const std::size_t last = points_.size() - 1;
    std::size_t place = PlaceOf(from);
    if ((key == Qt::Key_Left || key == Qt::Key_Down) && place > 0) --place;
    if ((key == Qt::Key_Right || key == Qt::Key_Up) && place < last) ++place;
    if (key == Qt::Key_Home || key == Qt::Key_PageUp) place = 0;
    if (key == Qt::Key_End || key == Qt::Key_PageDown) place = last;
    return {points_[place].row, 1};
  }

  QString Tell(const GridCell& element) const override {
    return QObject::tr("Row %1: %2")
        .arg(element.row)
        .arg(QString::fromStdString(CStr(points_[PlaceOf(element)].value)));
  }

 private:
  struct Point {
    double value;
    int row;
    QPointF centre;
  };

  static double Sign(double value) { return value < 0 ? -1 : value > 0 ? 1 : 0; }

  double AcrossOf(double value) const {
    // Halves: the length of the line may be beyond the largest number.
    const double length = line_.high / 2 - line_.low / 2;
    return left_ + (right_ - left_) * ((value / 2 - line_.low / 2) / length);
  }

  /// Puts every point on the line, or on those that it would cover. Where they would grow out of
  /// the picture they lie closer together.
  void Place() {
    double across = -1;
    int level = 0;
    int highest = 0;
    std::vector<int> levels;
    for (const Point& point : points_) {
      const double x = AcrossOf(point.value);
      const bool covers = across >= 0 && x - across < 2 * kRadius;
      level = covers ? level + 1 : 0;
      if (!covers) across = x;
      highest = std::max(highest, level);
      levels.push_back(level);
    }
    const double room = base_ - 2 * kRadius - kPad;
    const double step = std::min(2 * kRadius + 1, room / std::max(1, highest));
    for (std::size_t i = 0; i < points_.size(); ++i)
      points_[i].centre = {AcrossOf(points_[i].value), base_ - kRadius - 1 - levels[i] * step};
  }

  void PaintMark(QPainter& painter, double mark) const {
    const double x = AcrossOf(mark);
    QColor ink = style_.palette.color(QPalette::WindowText);
    painter.setPen(ink);
    painter.drawLine(QPointF(x, base_), QPointF(x, base_ + kMarkLength));
    const double room = metrics_.horizontalAdvance(Number(mark)) + kPad;
    painter.drawText(QRectF(x - room / 2, base_ + kMarkLength, room, metrics_.height()),
                     Qt::AlignCenter, Number(mark));
    if (mark != 0) return;
    ink.setAlphaF(0.4F);
    painter.setPen(ink);
    painter.drawLine(QPointF(x, kPad), QPointF(x, base_));
  }

  std::size_t PlaceOf(const GridCell& element) const {
    for (std::size_t i = 0; i < points_.size(); ++i) {
      if (points_[i].row == element.row) return i;
    }
    return 0;
  }

  PictureStyle style_;
  QFontMetricsF metrics_;
  bool dark_;
  std::vector<Point> points_;  ///< From the least to the greatest.
  NumberLine line_;
  double left_;
  double right_;
  double base_;  ///< How far down the line is.
};

}  // namespace

std::unique_ptr<Picture> LinePicture(const Matrix& matrix, const PictureStyle& style) {
  return std::make_unique<Points>(matrix, style);
}

}  // namespace qmx
