#include "algorithms/definiteness.h"

#include <algorithm>
#include <cmath>

#include "algorithms/elimination.h"

namespace qmx {
namespace {

/// Reduces row k by the rows above it; the larger magnitude of the two stays as the upper row. A
/// pivot of exactly zero ends the reduction. Returns the number of exchanges.
int JoinRow(Matrix& W, int k) {
  int exchanges = 0;
  for (int i = 1; i < k; ++i) {
    if (std::abs(W(k, i)) > std::abs(W(i, i))) {
      W.SwapRows(i, k, i);
      ++exchanges;
    }
    if (W(i, i) == 0) break;
    const double f = W(k, i) / W(i, i);
    for (int j = i + 1; j <= W.Cols(); ++j) W(k, j) -= f * W(i, j);
  }
  return exchanges;
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
  report.leadingMinor.push_back(W.At(1, 1));
  report.smallestPivot.push_back(std::abs(W(1, 1)));
  int exchanges = 0;
  for (int k = 2; k <= n; ++k) {
    exchanges += JoinRow(W, k);
    report.leadingMinor.push_back(AlternatingSign(exchanges) * LeadingProduct(W, k));
    report.smallestPivot.push_back(SmallestMagnitude(W, k));
    progress.Report(static_cast<double>(k) / n * k / n);
  }
  report.overallSmallestPivot =
      *std::min_element(report.smallestPivot.begin(), report.smallestPivot.end());
  report.verdict = ClassifyMinors(report.leadingMinor);
  return report;
}

}  // namespace qmx
