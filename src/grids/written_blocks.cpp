// SPDX-License-Identifier: MIT
#include "grids/written_blocks.h"

#include <algorithm>
#include <utility>

namespace qmx {

void WrittenBlocks::Add(int row, int col, TextBlock texts) {
  const int lastRow = row + texts.rows - 1;
  const int lastCol = col + texts.cols - 1;
  std::erase_if(blocks_, [&](const Placed& old) {
    return old.row >= row && old.lastRow <= lastRow && old.col >= col && old.lastCol <= lastCol;
  });
  blocks_.push_back(
      {row, col, lastRow, lastCol, std::make_shared<const TextBlock>(std::move(texts))});
}

std::optional<std::string_view> WrittenBlocks::Find(int row, int col) const {
  const auto covers = [row, col](const Placed& block) {
    return row >= block.row && row <= block.lastRow && col >= block.col && col <= block.lastCol;
  };
  const auto found = std::find_if(blocks_.rbegin(), blocks_.rend(), covers);
  if (found == blocks_.rend()) return std::nullopt;
  return found->texts->At(row - found->row, col - found->col);
}

void WrittenBlocks::Clip(int rowCount, int columnCount) {
  for (Placed& block : blocks_) {
    block.lastRow = std::min(block.lastRow, rowCount - 1);
    block.lastCol = std::min(block.lastCol, columnCount - 1);
  }
  std::erase_if(blocks_, [](const Placed& block) {
    return block.lastRow < block.row || block.lastCol < block.col;
  });
}

}  // namespace qmx
