// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>

namespace qmx {

/// A cell of a grid, counted as its model counts.
struct GridCell {
  int row;
  int col;

  bool operator==(const GridCell&) const = default;
};

/// A block of cells of a grid, both ends included.
struct CellBlock {
  int top;
  int left;
  int bottom;
  int right;

  bool operator==(const CellBlock&) const = default;
  bool Contains(int row, int col) const {
    return row >= top && row <= bottom && col >= left && col <= right;
  }
  bool IsOneCell() const { return top == bottom && left == right; }
  /// The cell of the block that is closest to a cell.
  GridCell Nearest(GridCell cell) const {
    return {std::clamp(cell.row, top, bottom), std::clamp(cell.col, left, right)};
  }
};

/// The block of cells that is selected: it spans from the cell at which it was begun to the cell at
/// which it ends now, or covers whole rows or columns between the two. Of constant size, whatever
/// it covers.
class GridSelection {
 public:
  enum class Span { kNone, kCells, kRows, kColumns, kAll };

  Span Kind() const { return span_; }
  bool IsActive() const { return span_ != Span::kNone; }
  void Clear() { span_ = Span::kNone; }
  void Begin(Span span, GridCell cell) {
    span_ = span;
    from_ = to_ = cell;
  }
  void ExtendTo(GridCell cell) { to_ = cell; }
  /// Where it ends now.
  GridCell End() const { return to_; }
  /// The selected ones of `all` cells; it must be active.
  CellBlock Block(const CellBlock& all) const {
    CellBlock block{std::min(from_.row, to_.row), std::min(from_.col, to_.col),
                    std::max(from_.row, to_.row), std::max(from_.col, to_.col)};
    if (span_ == Span::kRows || span_ == Span::kAll) block.left = all.left, block.right = all.right;
    if (span_ == Span::kColumns || span_ == Span::kAll) {
      block.top = all.top, block.bottom = all.bottom;
    }
    return block;
  }

 private:
  Span span_ = Span::kNone;
  GridCell from_{};
  GridCell to_{};
};

}  // namespace qmx
