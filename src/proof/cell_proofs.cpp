// SPDX-License-Identifier: MIT
#include "proof/cell_proofs.h"

#include "base/number_text.h"

namespace qmx {
namespace {

void Note(FewestDigits& fewest, int digits, int row, int col) {
  if (fewest.row == 0 || digits < fewest.digits) fewest = {digits, row, col};
}

}  // namespace

const ElementProof* CellProofs::Find(int row, int col) const {
  if (row == 0) return header != nullptr ? header->Find(col, 1) : nullptr;
  if (proof.elements.empty() || !computed.Contains(row, col)) return nullptr;
  return &proof.At(row, col);
}

int CellProofs::Held(int row, int col, std::string_view shown, int most) const {
  const ElementProof* found = Find(row, col);
  if (found == nullptr) return 0;
  const double value = row == 0 ? header->computed(col, 1) : computed(row, col);
  return HeldDigits(shown, most, value, *found);
}

void FindFewest(const std::vector<bool>& columns, CellProofs& cells) {
  cells.proof.wide = {kWideDigits, 0, 0};
  cells.proof.narrow = {kNarrowDigits, 0, 0};
  for (int i = 1; i <= cells.computed.Rows(); ++i) {
    for (int j = 1; j <= cells.computed.Cols(); ++j) {
      const auto place = static_cast<std::size_t>(j - 1);
      if (place < columns.size() && !columns[place]) continue;
      const double value = cells.computed(i, j);
      Note(cells.proof.wide, cells.Held(i, j, CStr(value), kWideDigits), i, j);
      Note(cells.proof.narrow, cells.Held(i, j, CStrSingle(value), kNarrowDigits), i, j);
    }
  }
}

}  // namespace qmx
