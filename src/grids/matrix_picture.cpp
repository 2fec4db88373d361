// SPDX-License-Identifier: MIT
// A matrix as coloured squares.

#include <QFontMetricsF>
#include <QObject>
#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "grids/picture.h"
#include "output/picture_cells.h"
#include "output/picture_colours.h"

namespace qmx {

bool PictureStyle::IsDark() const {
  constexpr int kDarkBelow = 128;
  return palette.color(QPalette::Window).lightness() < kDarkBelow;
}

namespace {

constexpr double kPad = 8;
constexpr double kLargestSide = 96;
constexpr double kThinnest = 8;    // Where there is room, a few rows are not drawn thinner.
constexpr double kGapFrom = 8;     // Squares of this side stand apart, and zeros have a mark.
constexpr double kSingleFrom = 4;  // Squares of this side are drawn one by one.
constexpr double kLegendBar = 16;
constexpr int kLegendSteps = 64;

QString Number(double value) { return QString::fromStdString(CStrSingle(value)); }
QColor ToQColor(const Rgb& colour) { return {colour.red, colour.green, colour.blue}; }

class Squares : public Picture {
 public:
  Squares(const Matrix& matrix, const PictureStyle& style)
      : style_(style), metrics_(style.font), dark_(style.IsDark()) {
    const QRectF room = Room(matrix);
    cells_ = PictureCells(matrix, MostRows(matrix, room), MostCols(matrix, room));
    if (cells_.Rows() == 0 || cells_.Cols() == 0) return;
    const double across = room.width() / cells_.Cols();
    const double down = room.height() / cells_.Rows();
    double side = std::min({across, down, kLargestSide});
    if (side >= 1) side = std::floor(side);
    width_ = std::max(side, std::min(kThinnest, across));
    height_ = std::max(side, std::min(kThinnest, down));
    corner_ = room.topLeft();
  }

  void Paint(QPainter& painter) const override {
    painter.setFont(style_.font);
    painter.setPen(style_.palette.color(QPalette::WindowText));
    if (cells_.Rows() == 0 || cells_.Cols() == 0) return;
    if (std::min(width_, height_) >= kSingleFrom) {
      PaintOneByOne(painter);
    } else {
      PaintAsImage(painter);
    }
    PaintNumbers(painter);
    PaintLegend(painter);
  }

  std::optional<GridCell> ElementAt(const QPointF& place) const override {
    const double j = std::floor((place.x() - corner_.x()) / width_);
    const double i = std::floor((place.y() - corner_.y()) / height_);
    if (!(j >= 0 && j < cells_.Cols() && i >= 0 && i < cells_.Rows())) return std::nullopt;
    return ElementOf(static_cast<int>(i), static_cast<int>(j));
  }

  QRectF RectOf(const GridCell& element) const override {
    return SquareAt(cells_.RowOf(element.row), cells_.ColOf(element.col));
  }

  GridCell Next(const GridCell& from, int key) const override {
    int i = cells_.RowOf(from.row);
    int j = cells_.ColOf(from.col);
    if (key == Qt::Key_Up) --i;
    if (key == Qt::Key_Down) ++i;
    if (key == Qt::Key_Left) --j;
    if (key == Qt::Key_Right) ++j;
    if (key == Qt::Key_Home) j = 0;
    if (key == Qt::Key_End) j = cells_.Cols() - 1;
    if (key == Qt::Key_PageUp) i = 0;
    if (key == Qt::Key_PageDown) i = cells_.Rows() - 1;
    return ElementOf(std::clamp(i, 0, cells_.Rows() - 1), std::clamp(j, 0, cells_.Cols() - 1));
  }

  QString Tell(const GridCell& element) const override {
    const int i = cells_.RowOf(element.row);
    const int j = cells_.ColOf(element.col);
    const PictureCell& cell = cells_.At(i, j);
    const QString value = QString::fromStdString(CStr(cell.value));
    QString place = QObject::tr("Row %1, column %2: %3").arg(cell.row).arg(cell.col).arg(value);
    if (!cells_.IsReduced()) return place;
    return QObject::tr("%1, the largest of rows %2 to %3, columns %4 to %5")
        .arg(place)
        .arg(cells_.FirstRow(i))
        .arg(cells_.FirstRow(i + 1) - 1)
        .arg(cells_.FirstCol(j))
        .arg(cells_.FirstCol(j + 1) - 1);
  }

 private:
  /// Where the squares may be: right of the rows' numbers, below the columns', left of the legend.
  QRectF Room(const Matrix& matrix) const {
    double largest = 0;
    const double* elements = matrix.Data();
    for (std::size_t k = 0; k < matrix.Size(); ++k)
      largest = std::max(largest, std::abs(elements[k]));
    const double legend = 2 * kPad + kLegendBar + metrics_.horizontalAdvance(Number(-largest));
    const double left = 2 * kPad + metrics_.horizontalAdvance(QString::number(matrix.Rows()));
    const double top = kPad + metrics_.height();
    return {left, top, std::max(1.0, style_.size.width() - left - legend - kPad),
            std::max(1.0, style_.size.height() - top - kPad)};
  }

  static double Reduction(const Matrix& matrix, const QRectF& room) {
    return std::max({1.0, matrix.Rows() / room.height(), matrix.Cols() / room.width()});
  }
  static int Most(int count, double reduction, double room) {
    const int whole = static_cast<int>(std::ceil(count / reduction));
    return std::max({1, whole, std::min(count, static_cast<int>(room / kThinnest))});
  }
  static int MostRows(const Matrix& matrix, const QRectF& room) {
    return Most(matrix.Rows(), Reduction(matrix, room), room.height());
  }
  static int MostCols(const Matrix& matrix, const QRectF& room) {
    return Most(matrix.Cols(), Reduction(matrix, room), room.width());
  }

  GridCell ElementOf(int i, int j) const { return {cells_.At(i, j).row, cells_.At(i, j).col}; }
  QColor ColourAt(int i, int j) const {
    return ToQColor(PictureColour(cells_.At(i, j).value, cells_.Largest(), dark_));
  }
  QRectF SquareAt(int i, int j) const {
    return {corner_.x() + j * width_, corner_.y() + i * height_, width_, height_};
  }
  QRectF AllSquares() const {
    return {corner_, QSizeF(width_ * cells_.Cols(), height_ * cells_.Rows())};
  }

  void PaintOneByOne(QPainter& painter) const {
    const double gap = std::min(width_, height_) >= kGapFrom ? 1 : 0;
    for (int i = 0; i < cells_.Rows(); ++i) {
      for (int j = 0; j < cells_.Cols(); ++j) {
        const QRectF square = SquareAt(i, j).adjusted(0, 0, -gap, -gap);
        painter.fillRect(square, ColourAt(i, j));
        if (gap > 0 && cells_.At(i, j).value == 0) PaintZeroMark(painter, square);
      }
    }
  }

  /// Who sees no colours tells zeros by a small cross.
  void PaintZeroMark(QPainter& painter, const QRectF& square) const {
    constexpr double kArm = 2;
    const QPointF centre = square.center();
    const QColor colour = style_.palette.color(QPalette::WindowText);
    painter.fillRect(QRectF(centre.x() - kArm, centre.y() - 0.5, 2 * kArm, 1), colour);
    painter.fillRect(QRectF(centre.x() - 0.5, centre.y() - kArm, 1, 2 * kArm), colour);
  }

  void PaintAsImage(QPainter& painter) const {
    QImage image(cells_.Cols(), cells_.Rows(), QImage::Format_RGB32);
    for (int i = 0; i < cells_.Rows(); ++i) {
      auto* line = reinterpret_cast<QRgb*>(image.scanLine(i));
      for (int j = 0; j < cells_.Cols(); ++j) {
        const Rgb colour = PictureColour(cells_.At(i, j).value, cells_.Largest(), dark_);
        line[j] = qRgb(colour.red, colour.green, colour.blue);
      }
    }
    painter.drawImage(AllSquares(), image);
  }

  /// Each row and column has its number where there is room, else the first and the last ones have.
  void PaintNumbers(QPainter& painter) const {
    const bool eachRow = !cells_.IsReduced() && height_ >= metrics_.height();
    const bool eachCol =
        !cells_.IsReduced() &&
        width_ >= metrics_.horizontalAdvance(QString::number(cells_.Cols())) + kPad / 2;
    for (int i = 0; i < cells_.Rows(); ++i) {
      if (!eachRow && i != 0 && i != cells_.Rows() - 1) continue;
      if (!eachRow && i != 0 && AllSquares().height() < 2 * metrics_.height()) continue;
      const QRectF square = SquareAt(i, 0);
      const int number = i == 0 ? 1 : cells_.FirstRow(i + 1) - 1;
      painter.drawText(QRectF(0, square.center().y() - metrics_.height() / 2,
                              corner_.x() - kPad / 2, metrics_.height()),
                       Qt::AlignRight | Qt::AlignVCenter, QString::number(number));
    }
    for (int j = 0; j < cells_.Cols(); ++j) {
      if (!eachCol && j != 0 && j != cells_.Cols() - 1) continue;
      const int number = j == 0 ? 1 : cells_.FirstCol(j + 1) - 1;
      const QString text = QString::number(number);
      const double room = metrics_.horizontalAdvance(text) + kPad;
      if (!eachCol && j != 0 && AllSquares().width() < 2 * room) continue;
      painter.drawText(QRectF(SquareAt(0, j).center().x() - room / 2,
                              corner_.y() - metrics_.height(), room, metrics_.height()),
                       Qt::AlignCenter, text);
    }
  }

  void PaintLegend(QPainter& painter) const {
    constexpr double kTallest = 200;
    const double largest = cells_.Largest();
    const double left = style_.size.width() - kPad - metrics_.horizontalAdvance(Number(-largest)) -
                        kPad / 2 - kLegendBar;
    const double room = style_.size.height() - corner_.y() - kPad;
    const double zero = metrics_.height() + kPad;
    const auto label = [&](double centre, const QString& text) {
      painter.drawText(QRectF(left + kLegendBar + kPad / 2, centre - metrics_.height() / 2,
                              style_.size.width(), metrics_.height()),
                       Qt::AlignLeft | Qt::AlignVCenter, text);
    };
    double top = corner_.y();
    if (largest > 0) {
      const QRectF bar(left, top, kLegendBar, std::clamp(room - zero, kPad, kTallest));
      for (int step = 0; step < kLegendSteps; ++step) {
        // The bar has the colours of numbers that are not 0, also in its middle.
        const double value = largest * (1 - (2 * step + 1.0) / kLegendSteps);
        const double height = bar.height() / kLegendSteps;
        painter.fillRect(QRectF(left, top + step * height, kLegendBar, height + 0.5),
                         ToQColor(PictureColour(value, largest, dark_)));
      }
      label(bar.top() + metrics_.height() / 2, Number(largest));
      label(bar.bottom() - metrics_.height() / 2, Number(-largest));
      top = bar.bottom() + kPad;
    }
    if (!cells_.HasZeros()) return;
    const QRectF square(left, top, kLegendBar, metrics_.height());
    painter.fillRect(square, ToQColor(PictureColour(0, largest, dark_)));
    PaintZeroMark(painter, square);
    label(square.center().y(), QStringLiteral("0"));
  }

  PictureStyle style_;
  QFontMetricsF metrics_;
  bool dark_;
  PictureCells cells_;
  QPointF corner_;
  double width_ = 1;  ///< Of a square.
  double height_ = 1;
};

}  // namespace

std::unique_ptr<Picture> MatrixPicture(const Matrix& matrix, const PictureStyle& style) {
  return std::make_unique<Squares>(matrix, style);
}

}  // namespace qmx
