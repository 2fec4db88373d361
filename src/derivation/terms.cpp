// SPDX-License-Identifier: MIT
#include "derivation/terms.h"

namespace qmx {

void AppendProduct(Line& line, const Traced& a, const Traced& b) {
  line.pieces.emplace_back(Show(a));
  line.pieces.emplace_back(Sign("·"));
  line.pieces.emplace_back(Show(b));
}

void AppendDiagonalProduct(Line& line, const Elements<Traced>& W, int order) {
  for (int k = 1; k <= order; ++k) {
    if (k > 1) line.pieces.emplace_back(Sign("·"));
    line.pieces.emplace_back(Show(W(k, k)));
  }
}

bool AppendTerm(Line& line, const Traced& coefficient, const Name& name, bool isFirst) {
  if (IsJust(coefficient, 0)) return false;
  const bool isNegative = IsNegative(coefficient);
  if (isNegative || !isFirst) line.pieces.emplace_back(Sign(isNegative ? "−" : "+"));
  const Traced magnitude = isNegative ? -coefficient : coefficient;
  if (!IsJust(magnitude, 1)) {
    line.pieces.emplace_back(Show(magnitude));
    line.pieces.emplace_back(Sign("·"));
  }
  line.pieces.emplace_back(name);
  return true;
}

std::string IndexText(int row, int col) { return CStr(row) + "," + CStr(col); }

}  // namespace qmx
