// SPDX-License-Identifier: MIT
#pragma once

#include <QPainter>
#include <QRectF>
#include <memory>
#include <optional>
#include <vector>

#include "grids/typesetter.h"

namespace qmx {

/// A piece of a document, or a word of one, at its place.
struct PlacedPiece {
  const Piece* piece = nullptr;  ///< Null for a word.
  QString word;                  ///< With the blank behind it.
  Setting setting;
  QPointF at;     ///< The left end of the line that it stands on.
  qreal gap = 0;  ///< Before it, unless a line begins with it.
  Extent extent;
  int block = 0;
  int row = -1;    ///< Of a table, 0 for the headings; else -1.
  int source = 0;  ///< The number of the piece in its line.

  QRectF Rect() const { return {at.x(), at.y() - extent.ascent, extent.width, extent.Height()}; }
};

/// Pieces that stand one after another in a document: from the first to the last, both included.
struct PieceRange {
  int first = 0;
  int last = 0;

  bool Contains(int piece) const { return piece >= first && piece <= last; }
  bool operator==(const PieceRange&) const = default;
};

/// A document that is set in lines of a width. Pieces that are wider stand out on the right. What
/// is not in sight costs nothing when it is painted.
class DocumentLayout {
 public:
  struct PlacedBlock {
    qreal top = 0;
    qreal bottom = 0;
    int first = 0;  ///< Its pieces, up to that before `end`.
    int end = 0;
  };

  DocumentLayout() = default;
  DocumentLayout(std::shared_ptr<const Document> document, const Typesetter& setter, qreal width);

  qreal Width() const { return width_; }
  qreal Height() const { return blocks_.empty() ? 0 : blocks_.back().bottom; }
  const std::vector<PlacedPiece>& Pieces() const { return pieces_; }
  const std::vector<PlacedBlock>& Blocks() const { return blocks_; }
  /// The lines below the headings of tables, from above downwards.
  const std::vector<QLineF>& Rules() const { return rules_; }

  /// The block at a height, or the next one below; the last one below the end. -1 where there is
  /// none.
  int BlockAt(qreal y) const;
  /// The piece that is nearest to a point; -1 where there is none.
  int PieceNear(QPointF point) const;
  /// The rectangle of a block's pieces.
  QRectF BlockRect(int block) const;

  /// Paints what lies in an area. What is selected stands on the colour `selected`.
  void Paint(QPainter& painter, const Typesetter& setter, const QRectF& area,
             const std::optional<PieceRange>& selection = {}, const QColor& selected = {}) const;

  /// A part as a document of its own, without a title. Of a table it has whole rows.
  Document Part(const PieceRange& range) const;

 private:
  friend class Placer;

  std::shared_ptr<const Document> document_;
  std::vector<PlacedPiece> pieces_;
  std::vector<PlacedBlock> blocks_;
  std::vector<QLineF> rules_;  ///< Below the headings of tables, from above downwards.
  qreal width_ = 0;
};

}  // namespace qmx
