// SPDX-License-Identifier: MIT
#include "algorithms/substitution.h"

namespace qmx {

double RowTimesVector(const Matrix& T, int i, int first, int last, std::span<const double> x) {
  if (first > last) return 0.0;
  const double* const row = T.Row(i);
  const double* const unknown = x.data();
  double sum = 0.0;
  for (int j = first - 1; j < last; ++j) sum += row[j] * unknown[j];
  return sum;
}

void SubstituteForward(const Matrix& L, int rows, std::span<double> x, WorkMeter& meter) {
  for (int i = 1; i <= rows; ++i) {
    x[i - 1] -= RowTimesVector(L, i, 1, i - 1, x);
    meter.Add(kStepOfSum * (i - 1));
  }
}

int SubstituteBack(const Matrix& U, int top, std::span<double> x, WorkMeter& meter) {
  const int n = static_cast<int>(x.size());
  for (int i = n; i >= top; --i) {
    const double known = RowTimesVector(U, i, i + 1, n, x);
    meter.Add(kStepOfSum * (n - i));
    const double diagonal = U(i, i);
    if (diagonal == 0) return i;
    x[i - 1] = (x[i - 1] - known) / diagonal;
  }
  return 0;
}

}  // namespace qmx
