#include "algorithms/inverse.h"

#include <vector>

#include "algorithms/elimination.h"
#include "algorithms/gauss_jordan.h"

namespace qmx {
namespace {

// Up to here it takes longer to turn the order round than it saves.
constexpr int kSmallOrder = 32;

/// The columns of an exchanged matrix in the order of the rows that it started with.
Matrix Unscramble(const Matrix& W, const std::vector<int>& order) {
  const int n = W.Rows();
  Matrix result = Matrix::Unset(n, n);
  if (n <= kSmallOrder) {
    for (int i = 1; i <= n; ++i) {
      for (int j = 1; j <= n; ++j) result(i, order[j - 1]) = W(i, j);
    }
    return result;
  }
  std::vector<int> placeOf(n);  // Counted from 0.
  for (int j = 0; j < n; ++j) placeOf[order[j] - 1] = j;
  for (int i = 1; i <= n; ++i) {
    const double* const from = W.Row(i);
    double* const to = result.Row(i);
    for (int j = 0; j < n; ++j) to[j] = from[placeOf[j]];
  }
  return result;
}

}  // namespace

std::optional<Matrix> Inverse(Matrix W, Progress& progress) {
  const int n = W.Rows();
  const JordanExchange done = ExchangeAllColumns(W, EqualPivots::kFirstNumber, progress);
  if (!done.complete || (n > 0 && W(n, n) == 0)) return std::nullopt;
  return Unscramble(W, done.order);
}

std::optional<Matrix> AdjointByInverse(Matrix W, Progress& progress) {
  const int n = W.Rows();
  const JordanExchange done = ExchangeAllColumns(W, EqualPivots::kUpperRow, progress);
  double det = 1.0;
  for (const double pivot : done.pivots) det *= pivot;
  if (!done.complete || (n > 0 && W(n, n) == 0)) return std::nullopt;
  const double sign = AlternatingSign(done.exchanges);
  for (std::size_t k = 0; k < W.Size(); ++k) W.Data()[k] = sign * (det * W.Data()[k]);
  return Unscramble(W, done.order);
}

}  // namespace qmx
