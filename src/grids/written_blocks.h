// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "workspace/text_block.h"

namespace qmx {

/// Large blocks of cells that were written at once, each kept as it came. What is written later
/// lies over what was there.
class WrittenBlocks {
 public:
  /// Lays a block over the others, its first cell at (row, col).
  void Add(int row, int col, TextBlock texts);
  /// The text of a cell; nothing where no block covers it.
  std::optional<std::string_view> Find(int row, int col) const;
  /// Forgets the cells from this row and from this column on.
  void Clip(int rowCount, int columnCount);
  void Clear() { blocks_.clear(); }
  bool IsEmpty() const { return blocks_.empty(); }

 private:
  struct Placed {
    int row, col;
    int lastRow, lastCol;                    ///< Of what is left of it.
    std::shared_ptr<const TextBlock> texts;  ///< A copy of all blocks shares it.
  };

  std::vector<Placed> blocks_;
};

}  // namespace qmx
