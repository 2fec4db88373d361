#include "algorithms/inverse.h"

#include <algorithm>
#include <array>

#include "algorithms/elimination.h"
#include "algorithms/gauss_jordan.h"

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

/// The same for one of any order.
void GatherColumns(Matrix& W, const Vector<int>& order) {
  const int n = W.Rows();
  Vector<int> placeOf(n);
  for (int j = 1; j <= n; ++j) placeOf(order(j)) = j;
  Vector<double> scrambled(n);
  for (int i = 1; i <= n; ++i) {
    std::copy_n(W.Row(i), n, scrambled.From(1));
    for (int j = 1; j <= n; ++j) W(i, j) = scrambled(placeOf(j));
  }
}

void Unscramble(Matrix& W, const Vector<int>& order, const ExchangeSizes& sizes) {
  if (W.Rows() <= std::min(sizes.scatter, kMostScattered)) {
    ScatterColumns(W, order);
  } else {
    GatherColumns(W, order);
  }
}

}  // namespace

std::optional<Matrix> Inverse(Matrix W, Progress& progress, const BlockSizes& sizes) {
  const int n = W.Rows();
  const JordanExchange done =
      ExchangeAllColumns(W, EqualPivots::kFirstNumber, progress, sizes.exchange);
  if (!done.complete || (n > 0 && W(n, n) == 0)) return std::nullopt;
  Unscramble(W, done.order, sizes.exchange);
  return W;
}

std::optional<Matrix> AdjointByInverse(Matrix W, Progress& progress, const BlockSizes& sizes) {
  const int n = W.Rows();
  const JordanExchange done =
      ExchangeAllColumns(W, EqualPivots::kUpperRow, progress, sizes.exchange);
  double det = 1.0;
  for (int k = 1; k <= done.steps; ++k) det *= done.pivots(k);
  if (!done.complete || (n > 0 && W(n, n) == 0)) return std::nullopt;
  const double sign = AlternatingSign(done.exchanges);
  for (std::size_t k = 0; k < W.Size(); ++k) W.Data()[k] = sign * (det * W.Data()[k]);
  Unscramble(W, done.order, sizes.exchange);
  return W;
}

}  // namespace qmx
