// SPDX-License-Identifier: MIT
#include "grids/document_pages.h"

#include <QPainter>
#include <algorithm>

#include "grids/qt_text.h"

namespace qmx {
namespace {

// Pages are laid out in quarters of a point, so that letters have their places to the hair.
constexpr qreal kUnitsPerPoint = 4;
constexpr int kFontSize = 40;
constexpr qreal kHair = 2;
constexpr qreal kFootHeight = 80;

QFont PageFont() {
  QFont font = QFont("Liberation Sans");
  font.setStyleHint(QFont::SansSerif);
  font.setPixelSize(kFontSize);
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

QSizeF RoomOf(const QPagedPaintDevice& device) {
  return device.pageLayout().paintRect(QPageLayout::Point).size() * kUnitsPerPoint;
}

}  // namespace

DocumentPages::DocumentPages(std::shared_ptr<const Document> document, NumberForm form,
                             const QPagedPaintDevice& device)
    : setter_(PageFont(), form, PageColours::OfPaper()),
      title_(ToQString(document->title)),
      width_(RoomOf(device).width()),
      height_(RoomOf(device).height() - kFootHeight) {
  layout_ = DocumentLayout(std::move(document), setter_, width_);
  CutIntoStrips();
  Distribute();
}

void DocumentPages::CutIntoStrips() {
  for (const DocumentLayout::PlacedBlock& block : layout_.Blocks()) {
    for (int k = block.first; k < block.end; ++k) {
      const PlacedPiece& piece = layout_.Pieces()[k];
      const QRectF rect = piece.Rect();
      const bool isHeading = piece.setting.face >= Face::kStep;
      const bool isSameLine = k > block.first && layout_.Pieces()[k - 1].at.y() == piece.at.y();
      if (!isSameLine) strips_.push_back({rect.top(), rect.bottom(), rect.right(), isHeading});
      Strip& strip = strips_.back();
      strip.top = std::min(strip.top, rect.top());
      strip.bottom = std::max(strip.bottom, rect.bottom());
      strip.right = std::max(strip.right, rect.right());
    }
  }
  // The rule of a table goes with the headings above it.
  for (const QLineF& rule : layout_.Rules()) {
    const auto below = std::find_if(strips_.begin(), strips_.end(),
                                    [&rule](const Strip& strip) { return strip.top > rule.y1(); });
    if (below == strips_.begin()) continue;
    Strip& headings = *std::prev(below);
    headings.bottom = std::max(headings.bottom, rule.y1() + kHair + 1);
  }
}

void DocumentPages::Distribute() {
  qreal y = 0;
  int page = 0;
  std::size_t first = 0;  // Of the page.
  const auto place = [&](std::size_t k) {
    Strip& strip = strips_[k];
    strip.scale = std::min({1.0, width_ / strip.right, height_ / (strip.bottom - strip.top)});
    const qreal gap = k > first ? std::max(0.0, strip.top - strips_[k - 1].bottom) : 0;
    strip.page = page;
    strip.y = y + gap;
    y = strip.y + (strip.bottom - strip.top) * strip.scale;
  };
  for (std::size_t k = 0; k < strips_.size(); ++k) {
    place(k);
    if (y <= height_ || k == first) continue;
    // Headings go along with what they stand over.
    std::size_t start = k;
    while (start > first && strips_[start - 1].isHeading) --start;
    if (start == first) start = k;
    ++page;
    y = 0;
    first = start;
    for (std::size_t again = start; again <= k; ++again) place(again);
  }
  count_ = page + 1;
}

void DocumentPages::PaintPage(QPainter& painter, int page) const {
  for (const Strip& strip : strips_) {
    if (strip.page != page - 1) continue;
    painter.save();
    painter.translate(0, strip.y - strip.top * strip.scale);
    painter.scale(strip.scale, strip.scale);
    // A hair within, lest the lines above and below be painted, too.
    const qreal height = strip.bottom - strip.top - 2 * kHair;
    layout_.Paint(painter, setter_, QRectF(0, strip.top + kHair, strip.right, height));
    painter.restore();
  }
  const QString number = QString("%1 / %2").arg(page).arg(count_);
  const qreal foot = height_ + kFootHeight * 0.75;
  setter_.SetText(&painter, {0, foot}, Face::kSmall, title_);
  const Extent room = setter_.SetText(nullptr, {}, Face::kSmall, number);
  setter_.SetText(&painter, {width_ - room.width, foot}, Face::kSmall, number);
}

bool DocumentPages::Paint(QPagedPaintDevice& device, int first, int last) const {
  QPainter painter(&device);
  if (!painter.isActive()) return false;
  const qreal scale = device.logicalDpiX() / 72.0 / kUnitsPerPoint;
  painter.scale(scale, scale);
  for (int page = first; page <= last; ++page) {
    if (page > first && !device.newPage()) return false;
    PaintPage(painter, page);
  }
  return painter.end();
}

}  // namespace qmx
