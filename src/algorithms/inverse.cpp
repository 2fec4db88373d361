#include "algorithms/inverse.h"

#include <algorithm>
#include <array>
#include <vector>

#include "algorithms/elimination.h"
#include "algorithms/gauss_jordan.h"

namespace qmx {
namespace {

// Up to here it takes longer to turn the order round than it saves.
constexpr int kSmallOrder = 32;

/// Puts the columns of a small exchanged matrix in the order of the rows that it started with.
void UnscrambleSmall(Matrix& W, const std::vector<int>& order) {
  const int n = W.Rows();
  std::array<double, kSmallOrder> scrambled;
  for (int i = 1; i <= n; ++i) {
    double* const row = W.Row(i);
    std::copy_n(row, n, scrambled.data());
    for (int j = 0; j < n; ++j) row[order[j] - 1] = scrambled[j];
  }
}

/// The same for one of any order. Reads here and there are quicker than writes.
void Unscramble(Matrix& W, const std::vector<int>& order) {
  const int n = W.Rows();
  if (n <= kSmallOrder) {
    UnscrambleSmall(W, order);
    return;
  }
  std::vector<int> placeOf(n);  // Counted from 0.
  for (int j = 0; j < n; ++j) placeOf[order[j] - 1] = j;
  std::vector<double> scrambled(n);
  for (int i = 1; i <= n; ++i) {
    double* const row = W.Row(i);
    std::copy_n(row, n, scrambled.data());
    for (int j = 0; j < n; ++j) row[j] = scrambled[placeOf[j]];
  }
}

}  // namespace

std::optional<Matrix> Inverse(Matrix W, Progress& progress) {
  const int n = W.Rows();
  const JordanExchange done = ExchangeAllColumns(W, EqualPivots::kFirstNumber, progress);
  if (!done.complete || (n > 0 && W(n, n) == 0)) return std::nullopt;
  Unscramble(W, done.order);
  return W;
}

std::optional<Matrix> AdjointByInverse(Matrix W, Progress& progress) {
  const int n = W.Rows();
  const JordanExchange done = ExchangeAllColumns(W, EqualPivots::kUpperRow, progress);
  double det = 1.0;
  for (const double pivot : done.pivots) det *= pivot;
  if (!done.complete || (n > 0 && W(n, n) == 0)) return std::nullopt;
  const double sign = AlternatingSign(done.exchanges);
  for (std::size_t k = 0; k < W.Size(); ++k) W.Data()[k] = sign * (det * W.Data()[k]);
  Unscramble(W, done.order);
  return W;
}

}  // namespace qmx
