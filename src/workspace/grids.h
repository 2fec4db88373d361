// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/matrix.h"
#include "workspace/slot_table.h"
#include "workspace/text_block.h"

namespace qmx {

enum class Colour { kRed, kBlue };

/// What a grid is to show. Rows and columns of cells count from 0 and include the headers.
struct GridContent {
  struct CellText {
    int row;
    int col;
    std::string text;
  };
  struct CellColour {
    int row;
    int col;
    Colour colour;
  };

  /// The number of data cells each way.
  int rows = 0;
  int cols = 0;
  /// Shape, header numbers and `headings` are written anew also where the grid has the shape
  /// already. Cells that were there keep their texts, new ones are empty.
  bool anew = true;
  /// Texts that stand in place of header numbers.
  std::vector<CellText> headings;
  /// Texts and colours that are written in any case, and the colour of cells with none of their
  /// own.
  std::vector<CellText> texts;
  std::vector<CellColour> colours;
  std::optional<Colour> colour;
  /// The elements whose texts the data cells take: full double precision in a wide grid, else
  /// single precision. Null where the cells keep theirs.
  const Matrix* elements = nullptr;
  /// Where not empty: only the columns j with columns[j - 1] take elements.
  std::vector<bool> columns;
};

/// The grids of the matrices' windows, which are created, hidden, by whatever refers to them.
class Grids {
 public:
  Grids() = default;
  Grids(const Grids&) = delete;
  Grids& operator=(const Grids&) = delete;
  virtual ~Grids() = default;

  virtual void Show(Slot slot, const GridContent& content) = 0;
  /// Writes texts into a block of cells, the first of them into (row, col).
  virtual void Write(Slot slot, int row, int col, TextBlock&& texts) = 0;
  /// Full double precision and columns of double width. Outlives the grid.
  virtual bool IsWide(Slot slot) const = 0;
  /// Changes the columns' width; texts follow when elements are shown next.
  virtual void SetWide(Slot slot, bool wide) = 0;
};

}  // namespace qmx
