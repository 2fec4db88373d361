// SPDX-License-Identifier: MIT
#include "exchange/exact_text.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/number_text.h"
#include "exchange/refusal.h"

namespace qmx {

void AppendExact(std::string& text, double value, char decimalSign) {
  std::array<char, kFileNumberRoom> room;
  char* end = WriteClipboardNumber(room.data(), value);
  if (decimalSign != '.') std::replace(room.data(), end, '.', decimalSign);
  if (value == 0 && std::signbit(value)) text += '-';
  text.append(room.data(), end);
}

void CheckWritable(const Matrix& values) {
  if (values.Size() == 0) throw Refusal("The matrix is empty.");
  const double* first = values.Data();
  const double* last = first + values.Size();
  const double* bad = std::find_if_not(first, last, [](double x) { return std::isfinite(x); });
  if (bad == last) return;
  const auto k = static_cast<std::size_t>(bad - first);
  const auto cols = static_cast<std::size_t>(values.Cols());
  RefuseElement(k / cols + 1, k % cols + 1, "the element is no finite number.");
}

}  // namespace qmx
