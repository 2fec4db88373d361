// SPDX-License-Identifier: MIT
#include "exchange/refusal.h"

namespace qmx {

void RefuseAt(int line, int column, const std::string& text) {
  std::string place = "Line " + std::to_string(line);
  if (column > 0) place += ", column " + std::to_string(column);
  throw Refusal(place + ": " + text, line, column);
}

void RefuseElement(std::size_t row, std::size_t column, const std::string& text) {
  const std::string place = "Row " + std::to_string(row) + ", column " + std::to_string(column);
  throw Refusal(place + ": " + text, static_cast<int>(row), static_cast<int>(column));
}

}  // namespace qmx
