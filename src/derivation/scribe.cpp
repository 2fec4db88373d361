// SPDX-License-Identifier: MIT
#include "derivation/scribe.h"

namespace qmx {

void Scribe::Title(std::string text) {
  document_.title = text;
  Add(Heading{std::move(text), 1});
}

void Scribe::Add(Block block) { document_.blocks.push_back(std::move(block)); }

void MarkRow(ShownMatrix& matrix, int row, CellMark mark) {
  for (int j = 1; j <= matrix.cols; ++j) matrix.At(row, j).mark = mark;
}

void MarkCells(ShownMatrix& matrix, CellMark mark) {
  for (ShownCell& cell : matrix.cells) cell.mark = mark;
}

}  // namespace qmx
