// SPDX-License-Identifier: MIT
#include "algorithms/definiteness.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "algorithms/elimination.h"
#include "algorithms/ordered_product.h"
#include "base/vector.h"

namespace qmx {
namespace {

/// The diagonal of the reduced blocks as it comes about: element i changes where a row takes the
/// place of row i.
struct DiagonalChange {
  int row;  ///< That came.
  int i;
  double element;  ///< From then on.
};

/// Reduces every row of W by the rows above it. Of the row and the row of each step the one with
/// the larger magnitude stays as the upper row; a pivot of exactly zero ends the reduction of the
/// row.
///
/// Row k needs nothing for step i but its own steps before and the steps i of the rows above it. So
/// the steps of a block of columns are taken by all rows before the steps behind it:
///
///        first..last    behind         1. Rows first..last take the steps above them one by one.
///       +------------+---------+       2. Of the rows below, a group takes all steps of the block
///       |  \   U11   |   U12   |          in its columns first..last, as long as none is to be
///       |     \      |         |          exchanged; then it takes them behind, all at once:
///       +------------+---------+          A22 := A22 - F·U12.
///       |    group   |   A22   |       3. A row that is to be exchanged takes its steps by itself,
///       +------------+---------+          and the next group begins behind it.
class GrowingElimination {
 public:
  GrowingElimination(Matrix& W, WorkMeter& meter, const DefinitenessSizes& sizes)
      : W_(W), meter_(meter), sizes_(sizes), n_(W.Rows()) {
    if (n_ > sizes_.smallOrder) panel_ = Matrix::Unset(sizes_.steps, sizes_.group + 1);
  }

  /// Leaves the diagonal, each element as it is when its row has taken its steps.
  void Run(double* diagonal);
  /// In the order of the rows, and for each row in the order of its steps.
  const std::vector<DiagonalChange>& SortedChanges();

 private:
  void TakeStep(int i, int firstRow, int lastRow);
  void TakeRowStep(int k, int i);
  void EliminateBetween(int i, int top, int bottom);
  int TakeGroup(int top, int bottom, int first, int last);
  int TakeInOwnColumns(const View& panel, int first);

  bool HasEnded(int k) const { return !ended_.IsEmpty() && ended_(k) != 0; }

  Matrix& W_;
  WorkMeter& meter_;
  const DefinitenessSizes& sizes_;
  const int n_;
  /// For each row whether its reduction has ended. Empty as long as none has.
  Vector<char> ended_;
  std::vector<DiagonalChange> changes_;
  Matrix panel_;  ///< A group in the columns of a block, with these as rows.
};

void GrowingElimination::Run(double* diagonal) {
  const int steps = n_ <= sizes_.smallOrder ? n_ : sizes_.steps;
  for (int first = 1; first <= n_; first += steps) {
    const int last = std::min(first + steps - 1, n_);
    for (int i = first; i <= last; ++i) {
      diagonal[i - 1] = W_(i, i);
      TakeStep(i, i + 1, last);
    }
    for (int top = last + 1; top <= n_;) {
      top = TakeGroup(top, std::min(top + sizes_.group - 1, n_), first, last);
    }
  }
}

/// Step i of some rows, in all columns behind. Rows that stand together are eliminated together.
void GrowingElimination::TakeStep(int i, int firstRow, int lastRow) {
  int top = firstRow;
  for (int k = firstRow; k <= lastRow; ++k) {
    const bool plain = !HasEnded(k) && W_(i, i) != 0 && !(std::abs(W_(k, i)) > std::abs(W_(i, i)));
    if (plain) continue;
    EliminateBetween(i, top, k - 1);
    TakeRowStep(k, i);
    top = k + 1;
  }
  EliminateBetween(i, top, lastRow);
}

/// Step i of row k, in all columns behind.
void GrowingElimination::TakeRowStep(int k, int i) {
  if (HasEnded(k)) return;
  if (std::abs(W_(k, i)) > std::abs(W_(i, i))) {
    W_.SwapRows(i, k, i);
    changes_.push_back({k, i, W_(i, i)});
  }
  if (W_(i, i) == 0) {
    if (ended_.IsEmpty()) ended_ = Vector<char>(n_);
    ended_(k) = 1;
    return;
  }
  EliminateBetween(i, k, k);
}

void GrowingElimination::EliminateBetween(int i, int top, int bottom) {
  if (top > bottom) return;
  EliminateRows(&W_(i, i), &W_(top, i), n_, bottom - top + 1, 0, n_ - i);
  meter_.Add(1.0 * (bottom - top + 1) * (n_ - i));
}

/// The steps first..last of some of the rows top..bottom; returns the first row that is left.
int GrowingElimination::TakeGroup(int top, int bottom, int first, int last) {
  int all = 0;
  while (top + all <= bottom && !HasEnded(top + all)) ++all;
  // In front of the numbers of the rows stands the pivot of the column.
  const View panel = Part(panel_, 1, 1, last - first + 1, all + 1);
  for (int k = 0; k < all; ++k) {
    for (int s = 0; s < panel.rows; ++s) panel(s, k + 1) = W_(top + k, first + s);
  }
  for (int s = 0; s < panel.rows; ++s) panel(s, 0) = W_(first + s, first + s);
  const int rows = TakeInOwnColumns(panel, first);
  if (rows > 0) {
    SubtractProduct({&panel(0, 1), rows, panel.rows, 1, panel.rowStride},
                    Part(std::as_const(W_), first, last + 1, panel.rows, n_ - last),
                    Part(W_, top, last + 1, rows, n_ - last), meter_);
  }
  if (top + rows > bottom) return bottom + 1;
  for (int i = first; i <= last; ++i) TakeRowStep(top + rows, i);
  return top + rows + 1;
}

/// Takes the steps of the panel's columns in these columns alone. Returns how many of the rows do
/// so without an exchange; no number of theirs is needed any more but the factors, which are left
/// in the panel. Rows from the first that is to be exchanged on are dropped on the way.
int GrowingElimination::TakeInOwnColumns(const View& panel, int first) {
  int rows = panel.cols - 1;
  for (int s = 0; s < panel.rows && rows > 0; ++s) {
    double* column = &panel(s, 0);
    const double pivot = std::abs(column[0]);
    if (pivot == 0) return 0;
    if (LargestMagnitude(column, rows + 1) > pivot) {
      rows = static_cast<int>(std::find_if(column + 1, column + rows + 1,
                                           [pivot](double a) { return std::abs(a) > pivot; }) -
                              column) -
             1;
      if (rows == 0) return 0;
    }
    DivideBy(column[0], column + 1, rows);
    const int later = panel.rows - s - 1;
    if (later == 0) break;
    SubtractProduct({W_.Row(first + s) + first + s, later, 1, 1, 1}, {column + 1, 1, rows, 1, 1},
                    {&panel(s + 1, 1), later, rows, panel.rowStride, 1});
  }
  return rows;
}

const std::vector<DiagonalChange>& GrowingElimination::SortedChanges() {
  std::stable_sort(changes_.begin(), changes_.end(),
                   [](const auto& one, const auto& two) { return one.row < two.row; });
  return changes_;
}

/// Turns the diagonal that stands in report.leadingMinor into the minors and the smallest pivots of
/// all leading blocks. Those of a block begin as those of the block before, as far as its diagonal
/// is the same.
void ReportMinors(const std::vector<DiagonalChange>& changes, DefinitenessReport& report) {
  const std::size_t n = report.leadingMinor.size();
  std::vector<double> diagonal = report.leadingMinor;
  std::vector<double> product(n);
  std::vector<double> smallest(n);
  auto change = changes.begin();
  for (std::size_t k = 0; k < n; ++k) {
    std::size_t from = k;
    for (; change != changes.end() && change->row == static_cast<int>(k) + 1; ++change) {
      const std::size_t place = change->i - 1;
      diagonal[place] = change->element;
      from = std::min(from, place);
    }
    for (std::size_t l = from; l <= k; ++l) {
      const double magnitude = std::abs(diagonal[l]);
      product[l] = l == 0 ? diagonal[0] : diagonal[l] * product[l - 1];
      smallest[l] = l == 0 || magnitude < smallest[l - 1] ? magnitude : smallest[l - 1];
    }
    const auto exchanges = change - changes.begin();
    report.leadingMinor[k] = AlternatingSign(static_cast<int>(exchanges % 2)) * product[k];
    report.smallestPivot[k] = smallest[k];
  }
}

/// The same where the diagonal stayed as it was.
void ReportMinors(DefinitenessReport& report) {
  std::vector<double>& minor = report.leadingMinor;
  std::vector<double>& smallest = report.smallestPivot;
  smallest[0] = std::abs(minor[0]);
  for (std::size_t k = 1; k < minor.size(); ++k) {
    const double magnitude = std::abs(minor[k]);
    smallest[k] = magnitude < smallest[k - 1] ? magnitude : smallest[k - 1];
    minor[k] *= minor[k - 1];
  }
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

DefinitenessReport TestDefiniteness(Matrix W, Progress& progress, const BlockSizes& sizes) {
  const int n = W.Rows();
  RequireElement(n >= 1);
  DefinitenessReport report;
  report.leadingMinor = std::vector<double>(n);
  report.smallestPivot = std::vector<double>(n);
  WorkMeter meter(progress, EliminationWork(n, n, n));
  GrowingElimination elimination(W, meter, sizes.definiteness);
  elimination.Run(report.leadingMinor.data());
  const std::vector<DiagonalChange>& changes = elimination.SortedChanges();
  if (changes.empty()) {
    ReportMinors(report);
  } else {
    ReportMinors(changes, report);
  }
  report.overallSmallestPivot =
      *std::min_element(report.smallestPivot.begin(), report.smallestPivot.end());
  report.verdict = ClassifyMinors(report.leadingMinor);
  meter.End();
  return report;
}

}  // namespace qmx
