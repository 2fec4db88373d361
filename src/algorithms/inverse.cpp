// SPDX-License-Identifier: MIT
#include "algorithms/inverse.h"

#include <algorithm>
#include <array>
#include <utility>

#include "algorithms/elimination.h"
#include "algorithms/gauss_jordan.h"
#include "algorithms/shared_work.h"
#include "algorithms/work_matrix.h"

namespace qmx {
namespace {

/// Puts the columns of an exchanged matrix of a small order in the order of the rows that it
/// started with.
void ScatterColumns(Matrix& W, const Vector<int>& order) {
  const int n = W.Rows();
  std::array<double, kMostScattered> scrambled;
  for (int i = 1; i <= n; ++i) {
    double* const row = W.Row(i);
    std::copy_n(row, n, scrambled.data());
    for (int j = 0; j < n; ++j) row[order(j + 1) - 1] = scrambled[j];
  }
}

/// The same for one of any order, from the leading columns of a work matrix to A, which may be the
/// same.
void GatherColumns(const Matrix& W, const Vector<int>& order, Matrix& A, WorkMeter& whole) {
  const int n = W.Rows();
  Vector<int> placeOf(n);
  for (int j = 1; j <= n; ++j) placeOf(order(j)) = j;
  Matrix scrambled = Matrix::Unset(SharedTeam().Members(), n);
  ShareRows(whole, n, n, [&](int i, WorkMeter& meter) {
    double* const row = A.Row(i);
    double* const before = scrambled.Row(Team::Member() + 1);
    std::copy_n(W.Row(i), n, before);
    for (int j = 1; j <= n; ++j) row[j - 1] = before[placeOf(j) - 1];
    meter.Add(kMovedNumber * n);
  });
}

/// The inverse from an exchanged work matrix.
Matrix Unscramble(Matrix& W, const Vector<int>& order, WorkMeter& meter,
                  const ExchangeSizes& sizes) {
  const int n = W.Rows();
  if (W.Cols() != n) {
    Matrix A = Matrix::Unset(n, n);
    GatherColumns(W, order, A, meter);
    return A;
  }
  if (n <= std::min(sizes.scatter, kMostScattered)) {
    ScatterColumns(W, order);
  } else {
    GatherColumns(W, order, W, meter);
  }
  return std::move(W);
}

/// The exchange steps of a matrix of some order, and so many times a pass through it.
double WorkOfOrder(double n, int passes) { return n * n * (n + passes * kMovedNumber); }

}  // namespace

std::optional<Matrix> Inverse(const Matrix& A, Progress& progress, const BlockSizes& sizes) {
  const int n = A.Rows();
  Matrix W = WorkCopy(A, sizes.work);
  WorkMeter meter(progress, WorkOfOrder(n, 1));
  const JordanExchange done =
      ExchangeAllColumns(W, EqualPivots::kFirstNumber, meter, sizes.exchange);
  if (!done.complete || (n > 0 && W(n, n) == 0)) return std::nullopt;
  Matrix result = Unscramble(W, done.order, meter, sizes.exchange);
  meter.End();
  return result;
}

std::optional<Matrix> AdjointByInverse(const Matrix& A, Progress& progress,
                                       const BlockSizes& sizes) {
  const int n = A.Rows();
  Matrix W = WorkCopy(A, sizes.work);
  WorkMeter meter(progress, WorkOfOrder(n, 2));
  const JordanExchange done = ExchangeAllColumns(W, EqualPivots::kUpperRow, meter, sizes.exchange);
  double det = 1.0;
  for (int k = 1; k <= done.steps; ++k) det *= done.pivots(k);
  if (!done.complete || (n > 0 && W(n, n) == 0)) return std::nullopt;
  const double sign = AlternatingSign(done.exchanges);
  ShareRows(meter, n, n, [&](int i, WorkMeter& own) {
    double* const row = W.Row(i);
    for (int j = 0; j < n; ++j) row[j] = sign * (det * row[j]);
    own.Add(kMovedNumber * n);
  });
  Matrix result = Unscramble(W, done.order, meter, sizes.exchange);
  meter.End();
  return result;
}

}  // namespace qmx
