// SPDX-License-Identifier: MIT
#include "desktop/table_pages.h"

#include <QFont>
#include <QFontMetricsF>
#include <QLocale>
#include <QPainter>

namespace qmx {
namespace {

constexpr qreal kMarginInMillimetres = 10;
constexpr qreal kPointsPerInch = 72;

/// Paints lines in a fixed-pitch font whose characters are exactly as wide as the table was laid
/// out for, whatever font the system has.
class LinePainter {
 public:
  LinePainter(QPagedPaintDevice& device, const PrintSize& size)
      : painter_(&device), pixels_(device.logicalDpiY() / kPointsPerInch), size_(size) {
    QFont font("Courier New");
    font.setStyleHint(QFont::TypeWriter);
    font.setFixedPitch(true);
    font.setPointSizeF(size.font);
    font.setHintingPreference(QFont::PreferNoHinting);
    if (!painter_.isActive()) return;
    painter_.setFont(font);
    const QFontMetricsF metrics(font, &device);
    ascent_ = metrics.ascent();
    narrowing_ = size.character * pixels_ / metrics.horizontalAdvance('0');
  }

  bool IsActive() const { return painter_.isActive(); }
  /// Paints a line from a point on, in points from the corner of the print.
  void Write(qreal left, qreal top, const std::string& line) {
    if (line.empty()) return;
    painter_.save();
    painter_.translate(left * pixels_, top * pixels_ + ascent_);
    painter_.scale(narrowing_, 1);
    painter_.drawText(QPointF(0, 0), QString::fromStdString(line));
    painter_.restore();
  }
  bool End() { return painter_.end(); }

 private:
  QPainter painter_;
  qreal pixels_;
  PrintSize size_;
  qreal ascent_ = 0;
  qreal narrowing_ = 1;
};

}  // namespace

QPageLayout TablePage() {
  const bool metric = QLocale().measurementSystem() != QLocale::ImperialUSSystem;
  const QMarginsF margins(kMarginInMillimetres, kMarginInMillimetres, kMarginInMillimetres,
                          kMarginInMillimetres);
  return {QPageSize(metric ? QPageSize::A4 : QPageSize::Letter), QPageLayout::Portrait, margins,
          QPageLayout::Millimeter};
}

Paper PaperOf(const QPagedPaintDevice& device) {
  const QRectF room = device.pageLayout().paintRect(QPageLayout::Point);
  return {room.width(), room.height()};
}

bool PaintTable(QPagedPaintDevice& device, const PrintedTable& table, int firstPage, int lastPage,
                FunctionRef<bool(int page)> goesOn) {
  const PrintSize& size = table.Size();
  const Paper paper = PaperOf(device);
  LinePainter painter(device, size);
  if (!painter.IsActive()) return false;
  for (int page = firstPage; page <= lastPage && goesOn(page); ++page) {
    if (page > firstPage && !device.newPage()) return false;
    qreal top = 0;
    for (const std::string& line : table.Page(page)) {
      painter.Write(0, top, line);
      top += size.line;
    }
    const std::string foot = table.Foot(page);
    painter.Write(paper.width - static_cast<double>(foot.size()) * size.character,
                  paper.height - size.line, foot);
  }
  return painter.End();
}

}  // namespace qmx
