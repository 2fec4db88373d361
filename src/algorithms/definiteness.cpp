#include "algorithms/definiteness.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "algorithms/elimination.h"
#include "algorithms/ordered_product.h"

namespace qmx {
namespace {

/// Reduces one row of W after the other by the rows above it. Of the row and the row of each step
/// the one with the larger magnitude stays as the upper row; a pivot of exactly zero ends the
/// reduction.
///
/// Whether rows are exchanged shows in the column of the step alone. So a row takes a few steps in
/// their own columns first; the columns behind take them together afterwards, or right before an
/// exchange.
class GrowingElimination {
 public:
  explicit GrowingElimination(Matrix& W) : W_(W), n_(W.Rows()) {}

  void JoinRow(int k);
  int Exchanges() const { return exchanges_; }

 private:
  static constexpr int kBlockSteps = 16;
  // Up to here blocks take longer than they save.
  static constexpr int kSmallOrder = 48;

  bool TakeSteps(int k, int first, int last, int own);
  void TakeStepsBehind(int own, int k, int first, int end);

  Matrix& W_;
  const int n_;
  int exchanges_ = 0;
  std::array<double, kBlockSteps> factors_{};
};

void GrowingElimination::JoinRow(int k) {
  if (n_ <= kSmallOrder) {
    // The textbook loop itself: all columns are the step's own.
    TakeSteps(k, 1, k - 1, n_);
    return;
  }
  for (int first = 1; first < k; first += kBlockSteps) {
    const int last = std::min(first + kBlockSteps, k) - 1;
    if (!TakeSteps(k, first, last, last)) return;
  }
}

/// The steps first..last of row k, one by one up to column `own` and together behind it. False
/// where a zero pivot ends them.
bool GrowingElimination::TakeSteps(int k, int first, int last, int own) {
  int pending = first;  // The columns behind have taken the steps before this one.
  bool complete = true;
  double* row = W_.Row(k);
  for (int i = first; i <= last; ++i) {
    const double* upper = W_.Row(i);
    if (std::abs(row[i - 1]) > std::abs(upper[i - 1])) {
      TakeStepsBehind(own, k, pending, i);
      pending = i;
      W_.SwapRows(i, k, i);
      ++exchanges_;
    }
    if (upper[i - 1] == 0) {
      last = i - 1;
      complete = false;
      break;
    }
    const double f = row[i - 1] / upper[i - 1];
    if (own < n_) factors_[i - pending] = f;
    for (int j = i; j < own; ++j) row[j] -= f * upper[j];
  }
  TakeStepsBehind(own, k, pending, last + 1);
  return complete;
}

/// The steps first..end - 1 of row k in the columns behind `own`.
void GrowingElimination::TakeStepsBehind(int own, int k, int first, int end) {
  const int steps = end - first;
  const int cols = n_ - own;
  if (steps == 0 || cols == 0) return;
  SubtractProduct({factors_.data(), 1, steps, steps, 1}, Part(W_, first, own + 1, steps, cols),
                  Part(W_, k, own + 1, 1, cols));
}

/// Product of the leading k diagonal elements, the next one times the product so far.
double LeadingProduct(const Matrix& W, int k) {
  double product = W(1, 1);
  for (int l = 2; l <= k; ++l) product = W(l, l) * product;
  return product;
}

double SmallestMagnitude(const Matrix& W, int k) {
  double smallest = std::abs(W(1, 1));
  for (int l = 2; l <= k; ++l) {
    if (std::abs(W(l, l)) < smallest) smallest = std::abs(W(l, l));
  }
  return smallest;
}

}  // namespace

Definiteness ClassifyMinors(const std::vector<double>& leadingMinor) {
  bool positive = true;
  bool negative = true;
  bool hasZero = false;
  const int n = static_cast<int>(leadingMinor.size());
  for (int k = 1; k <= n; ++k) {
    const double minor = leadingMinor[k - 1];
    const bool evenOrder = k % 2 == 0;
    if (minor == 0) hasZero = true;
    if (minor < 0) positive = false;
    if (evenOrder ? minor < 0 : minor > 0) negative = false;
  }
  if (!positive && !negative) return Definiteness::kIndefinite;
  if (!hasZero) return positive ? Definiteness::kPositiveDefinite : Definiteness::kNegativeDefinite;
  if (positive && negative) return Definiteness::kSemidefinite;
  return positive ? Definiteness::kPositiveSemidefinite : Definiteness::kNegativeSemidefinite;
}

DefinitenessReport TestDefiniteness(Matrix W, Progress& progress) {
  const int n = W.Rows();
  DefinitenessReport report;
  const double corner = W.At(1, 1);
  report.leadingMinor.reserve(n);
  report.smallestPivot.reserve(n);
  report.leadingMinor.push_back(corner);
  report.smallestPivot.push_back(std::abs(corner));
  GrowingElimination elimination(W);
  for (int k = 2; k <= n; ++k) {
    elimination.JoinRow(k);
    report.leadingMinor.push_back(AlternatingSign(elimination.Exchanges()) * LeadingProduct(W, k));
    report.smallestPivot.push_back(SmallestMagnitude(W, k));
    progress.Report(static_cast<double>(k) / n * k / n);
  }
  report.overallSmallestPivot =
      *std::min_element(report.smallestPivot.begin(), report.smallestPivot.end());
  report.verdict = ClassifyMinors(report.leadingMinor);
  return report;
}

}  // namespace qmx
