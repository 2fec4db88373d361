// SPDX-License-Identifier: MIT
#include "derivation/exact_matrix.h"

namespace qmx {

bool TakeExact(const Elements<Traced>& elements, ExactMatrix& matrix) {
  for (int i = 1; i <= matrix.Rows(); ++i) {
    for (int j = 1; j <= matrix.Cols(); ++j) {
      if (!elements(i, j).isKnown) return false;
      fmpq_set(matrix.At(i, j), elements(i, j).exact.Get());
    }
  }
  return true;
}

std::optional<Rational> ExactDeterminant(const Elements<Traced>& elements, int n) {
  ExactMatrix block(n, n);
  if (!TakeExact(elements, block)) return std::nullopt;
  std::optional<Rational> determinant(std::in_place);
  fmpq_mat_det(determinant->Get(), block.Get());
  return determinant;
}

}  // namespace qmx
