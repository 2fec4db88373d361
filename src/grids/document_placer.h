// SPDX-License-Identifier: MIT
#pragma once

#include "grids/document_layout.h"

namespace qmx {

/// Places the blocks of a document one below the other.
class Placer {
 public:
  Placer(DocumentLayout& layout, const Typesetter& setter, qreal width)
      : layout_(layout), setter_(setter), width_(width) {}

  void PlaceAll();

 private:
  /// Where a line begins and ends.
  struct Room {
    qreal left;
    qreal right;
  };

  void Place(const Heading& heading);
  void Place(const Line& line);
  void Place(const Table& table);

  PlacedPiece& Add(PlacedPiece&& placed);
  void AddWords(const std::string& text, const Setting& setting, int row, int source);
  void AddPieces(const Line& line, bool isFormula, int row);
  /// Distributes the pieces from one on over lines, and goes below them.
  void Flow(int from, const Room& room, qreal leading);
  void EndLine(int from, int end, qreal leading);
  bool MayBreakBefore(int piece) const;
  /// Places the pieces from one on in a row from the left. Returns the room they take.
  Extent InRow(int from, int end);
  qreal WidthOf(int piece) const {
    return layout_.pieces_[piece].gap + layout_.pieces_[piece].extent.width;
  }
  int Count() const { return static_cast<int>(layout_.pieces_.size()); }

  DocumentLayout& layout_;
  const Typesetter& setter_;
  qreal width_;
  qreal y_ = 0;
  int block_ = 0;
};

}  // namespace qmx
