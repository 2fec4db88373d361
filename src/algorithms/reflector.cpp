// SPDX-License-Identifier: MIT
#include "algorithms/reflector.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace qmx {

void Reflector::Become(const double* column, std::ptrdiff_t stride, int count) {
  assert(count >= 2 && count <= u_.Size());
  order_ = count;
  first_ = column[0];
  double* const u = u_.From(1);
  double tail = 0.0;
  for (int i = 1; i < count; ++i) {
    u[i] = column[i * stride];
    tail += u[i] * u[i];
  }
  u[0] = std::sqrt(first_ * first_ + tail) + first_;
  beta_ = -2.0 / (u[0] * u[0] + tail);
  double* const scaled = scaled_.From(1);
  for (int i = 0; i < count - 1; ++i) scaled[i] = beta_ * u[i];
}

double Reflector::Diagonal(int i) const {
  const double u = *u_.From(i + 1);
  return beta_ * (u * u) + 1.0;
}

double Reflector::FirstOfProduct() const {
  const double* const u = u_.From(1);
  const double scaled = *scaled_.From(1);
  double sum = 0.0;
  sum += first_ * Diagonal(0);
  for (int i = 1; i < order_; ++i) sum += u[i] * (scaled * u[i]);
  return sum;
}

// Below the diagonal, too, an element is (β·u(i))·u(j) with i < j, the mirror of the one above.
void Reflector::Write(int row, int col, const View& part) const {
  const double* const u = u_.From(1);
  const double* const scaled = scaled_.From(1);
  const auto product = [&](const double* x, const double* y, int from, int to) {
    const int rows = to - from;
    if (rows <= 0) return;
    SetProduct({x + from, rows, 1, 1, 1}, {y + col, 1, part.cols, part.cols, 1},
               Part(part, from - row, 0, rows, part.cols));
  };
  const int lastRow = row + part.rows;
  const int lastCol = col + part.cols;
  product(scaled, u, row, std::min(lastRow, col));
  for (int i = std::max(row, col); i < std::min(lastRow, lastCol); ++i) {
    double* const out = &part(i - row, 0) - col;
    for (int j = col; j < i; ++j) out[j] = scaled[j] * u[i];
    out[i] = Diagonal(i);
    for (int j = i + 1; j < lastCol; ++j) out[j] = scaled[i] * u[j];
  }
  product(u, scaled, std::max(row, lastCol), lastRow);
}

}  // namespace qmx
