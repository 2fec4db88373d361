// SPDX-License-Identifier: MIT
#include "grids/document_layout.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "grids/document_placer.h"

namespace qmx {
namespace {

/// Adds a piece to a line; words that were parted come together again.
void Append(Line& line, const PlacedPiece& placed, int& lastSource) {
  if (placed.piece != nullptr) {
    line.pieces.push_back(*placed.piece);
  } else if (lastSource == placed.source && !line.pieces.empty()) {
    std::get<Words>(line.pieces.back()).text += placed.word.toStdString();
  } else {
    line.pieces.emplace_back(Words{placed.word.toStdString()});
  }
  lastSource = placed.source;
}

qreal Distance(const QRectF& rect, QPointF point) {
  const qreal dx = std::max({rect.left() - point.x(), point.x() - rect.right(), 0.0});
  const qreal dy = std::max({rect.top() - point.y(), point.y() - rect.bottom(), 0.0});
  // Who points beside a line means that line.
  constexpr qreal kLineFirst = 4;
  return std::hypot(dx, kLineFirst * dy);
}

}  // namespace

DocumentLayout::DocumentLayout(std::shared_ptr<const Document> document, const Typesetter& setter,
                               qreal width)
    : document_(std::move(document)) {
  Placer(*this, setter, width).PlaceAll();
}

int DocumentLayout::BlockAt(qreal y) const {
  if (blocks_.empty()) return -1;
  const auto found = std::partition_point(
      blocks_.begin(), blocks_.end(), [y](const PlacedBlock& block) { return block.bottom <= y; });
  const auto last = static_cast<std::ptrdiff_t>(blocks_.size()) - 1;
  return static_cast<int>(std::min(found - blocks_.begin(), last));
}

int DocumentLayout::PieceNear(QPointF point) const {
  const int block = BlockAt(point.y());
  int nearest = -1;
  qreal least = std::numeric_limits<qreal>::max();
  // A block without pieces has neighbours.
  for (int b = std::max(0, block - 1); b <= block + 1 && b < static_cast<int>(blocks_.size());
       ++b) {
    for (int k = blocks_[b].first; k < blocks_[b].end; ++k) {
      const qreal distance = Distance(pieces_[k].Rect(), point);
      if (distance >= least) continue;
      least = distance;
      nearest = k;
    }
  }
  return nearest;
}

QRectF DocumentLayout::BlockRect(int block) const {
  QRectF all;
  const PlacedBlock& placed = blocks_[block];
  for (int k = placed.first; k < placed.end; ++k) all |= pieces_[k].Rect();
  return all;
}

void DocumentLayout::Paint(QPainter& painter, const Typesetter& setter, const QRectF& area,
                           const std::optional<PieceRange>& selection,
                           const QColor& selected) const {
  for (int b = BlockAt(area.top());
       b >= 0 && b < static_cast<int>(blocks_.size()) && blocks_[b].top <= area.bottom(); ++b) {
    for (int k = blocks_[b].first; k < blocks_[b].end; ++k) {
      const PlacedPiece& placed = pieces_[k];
      const QRectF rect = placed.Rect();
      if (!rect.adjusted(0, 0, 1, 1).intersects(area)) continue;
      if (selection && selection->Contains(k)) painter.fillRect(rect, selected);
      if (placed.piece == nullptr) {
        setter.SetText(&painter, placed.at, placed.setting.face, placed.word);
      } else {
        setter.Set(&painter, placed.at, *placed.piece, placed.setting);
      }
    }
  }
  painter.setPen(setter.Colours().muted);
  for (const QLineF& rule : rules_) {
    if (rule.y1() >= area.top() && rule.y1() <= area.bottom()) painter.drawLine(rule);
  }
}

Document DocumentLayout::Part(const PieceRange& range) const {
  Document part;
  int k = range.first;
  while (k <= range.last) {
    const int block = pieces_[k].block;
    const Block& source = document_->blocks[block];
    const int end = std::min(blocks_[block].end, range.last + 1);
    if (const auto* table = std::get_if<Table>(&source)) {
      Table rows;
      rows.headings = table->headings;
      const int first = std::max(1, pieces_[k].row);
      for (int i = first; i <= pieces_[end - 1].row; ++i) rows.rows.push_back(table->rows[i - 1]);
      part.blocks.emplace_back(std::move(rows));
    } else {
      Line line;
      int lastSource = -1;
      for (int piece = k; piece < end; ++piece) Append(line, pieces_[piece], lastSource);
      if (const auto* heading = std::get_if<Heading>(&source)) {
        part.blocks.emplace_back(
            Heading{std::get<Words>(line.pieces.front()).text, heading->level});
      } else {
        line.isFormula = std::get<Line>(source).isFormula;
        part.blocks.emplace_back(std::move(line));
      }
    }
    k = end;
  }
  return part;
}

}  // namespace qmx
