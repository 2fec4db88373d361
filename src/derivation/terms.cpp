// SPDX-License-Identifier: MIT
#include "derivation/terms.h"

namespace qmx {

void AppendFactor(Line& line, const Traced& number) {
  const bool isEnclosed = number.value < 0 || (number.isKnown && number.exact.Sign() < 0);
  if (isEnclosed) line.pieces.emplace_back(Sign("("));
  line.pieces.emplace_back(Show(number));
  if (isEnclosed) line.pieces.emplace_back(Sign(")"));
}

void AppendProduct(Line& line, const Traced& a, const Traced& b) {
  AppendFactor(line, a);
  line.pieces.emplace_back(Sign("·"));
  AppendFactor(line, b);
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
