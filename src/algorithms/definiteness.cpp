// SPDX-License-Identifier: MIT
#include "algorithms/definiteness.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "algorithms/elimination.h"
#include "algorithms/elimination_steps.h"
#include "algorithms/ordered_product.h"
#include "algorithms/shared_work.h"
#include "algorithms/work_matrix.h"
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

/// Some rows take the steps first..last.
struct RowSteps {
  int row;
  int rows;
  int first;  ///< As the row itself: each of the rows takes the steps of those above it.
  int last;
  bool exchanged = false;  ///< Whether the row, which is one, first takes the place of row `first`.
};

/// Reduces every row of W by the rows above it. Of the row and the row of each step the one with
/// the larger magnitude stays as the upper row; a pivot of exactly zero ends the reduction of the
/// row.
///
/// As long as nothing is to be exchanged that is a plain elimination. Where something is, some
/// steps are taken here: row k needs nothing for step i but its own steps before and the steps i of
/// the rows above it, so that all rows can take a step before the next. Of a large matrix all rows
/// take the steps of a block of columns, and first in the columns of the block alone:
///
///        first..last    behind         1. Rows first..last take the steps above them one by one.
///       +------------+---------+       2. Of the rows below, a group takes all steps of the block,
///       |  \   U11   |   U12   |          as long as none is to be exchanged.
///       |     \      |         |       3. A row that is to be exchanged takes its steps by itself,
///       +------------+---------+          and the next group begins behind it.
///       |    group   |   A22   |       4. The columns behind follow in strips, side by side;
///       +------------+---------+          for a group all at once, A22 := A22 - F·U12.
class GrowingElimination {
 public:
  GrowingElimination(Matrix& W, WorkMeter& meter, const BlockSizes& sizes)
      : W_(W),
        meter_(meter),
        sizes_(sizes.definiteness),
        eliminationSizes_(sizes.elimination),
        n_(W.Rows()) {}

  /// Leaves the diagonal, each element as it is when its row has taken its steps.
  void Run(double* diagonal);
  /// In the order of the rows, and for each row in the order of its steps.
  const std::vector<DiagonalChange>& SortedChanges();

 private:
  bool IsUndisturbed(int i) const;
  void RunToEnd(double* diagonal);
  void TakeSteps(int first, int last, double* diagonal);
  void TakeBlock(int first, int last, double* diagonal);
  void TakeStep(int i, int lastRow, int right);
  void TakeRowStep(int k, int i, int right);
  void EliminateBetween(int i, int top, int bottom, int right);
  int TakeGroup(int top, int bottom, int first, int last);
  int TakeInOwnColumns(const View& panel, int first);
  void RecordUpperRows(int first, int last, std::size_t changesBefore);
  void RecordRow(int k, int first, int last, std::size_t changesBefore);
  void Follow(int from, int to, WorkMeter& meter);

  bool HasEnded(int k) const { return !endedAt_.IsEmpty() && endedAt_(k) != 0; }

  Matrix& W_;  ///< May have columns behind those of the matrix.
  WorkMeter& meter_;
  const DefinitenessSizes& sizes_;
  const EliminationSizes& eliminationSizes_;
  const int n_;
  bool shares_ = false;  ///< Whether members share what follows a block.
  /// For each row the step that its reduction has ended at, or 0. Empty as long as none has.
  Vector<int> endedAt_;
  std::vector<DiagonalChange> changes_;
  Matrix panel_;                 ///< A group in the columns of a block, with these as rows.
  std::vector<RowSteps> taken_;  ///< Steps of a block, in the order of the rows.
};

void GrowingElimination::Run(double* diagonal) {
  if (n_ < sizes_.shareFrom) return RunToEnd(diagonal);
  const Attempt attempt(SharedTeam(), "growing elimination", EliminationWork(n_, n_, n_));
  shares_ = attempt.IsShared();
  RunToEnd(diagonal);
}

void GrowingElimination::RunToEnd(double* diagonal) {
  // Where exchanges come again and again, it is not worth while to look often.
  int stepsBetween = sizes_.steps;
  for (int first = 1; first <= n_;) {
    if (n_ - first >= sizes_.smallOrder && endedAt_.IsEmpty() && IsUndisturbed(first)) {
      const int end = EliminateWhileLargest(W_, first, n_ - 1, meter_, eliminationSizes_);
      for (int i = first; i < end; ++i) diagonal[i - 1] = W_(i, i);
      stepsBetween = end - first < sizes_.steps ? 2 * stepsBetween : sizes_.steps;
      first = end;
    }
    const int last = n_ - first < sizes_.smallOrder ? n_ : std::min(first + stepsBetween - 1, n_);
    TakeSteps(first, last, diagonal);
    first = last + 1;
  }
}

/// Whether step i exchanges no row that is left, and ends none.
bool GrowingElimination::IsUndisturbed(int i) const {
  const double pivot = std::abs(W_(i, i));
  if (pivot == 0) return false;
  for (int k = i + 1; k <= n_; ++k) {
    if (std::abs(W_(k, i)) > pivot) return false;
  }
  return true;
}

/// The steps first..last of all rows.
void GrowingElimination::TakeSteps(int first, int last, double* diagonal) {
  for (; first <= last && n_ - first >= sizes_.shareFrom; first += sizes_.steps) {
    TakeBlock(first, std::min(first + sizes_.steps - 1, last), diagonal);
  }
  for (int i = first; i <= last; ++i) {
    diagonal[i - 1] = W_(i, i);
    TakeStep(i, n_, n_);
  }
}

void GrowingElimination::TakeBlock(int first, int last, double* diagonal) {
  const std::size_t changesBefore = changes_.size();
  for (int i = first; i <= last; ++i) {
    diagonal[i - 1] = W_(i, i);
    TakeStep(i, last, last);
  }
  if (panel_.Size() == 0) panel_ = Matrix::Unset(sizes_.steps, sizes_.group + 1);
  taken_.clear();
  RecordUpperRows(first, last, changesBefore);
  for (int top = last + 1; top <= n_;) {
    top = TakeGroup(top, std::min(top + sizes_.group - 1, n_), first, last);
  }
  const Strips strips = StripsOf(last + 1, n_, sizes_.strip);
  if (!shares_) {
    for (int strip = 0; strip < strips.count; ++strip)
      Follow(strips.First(strip), strips.Last(strip), meter_);
    return;
  }
  SharePieces(meter_, strips.count, [&](int strip, WorkMeter& meter) {
    Follow(strips.First(strip), strips.Last(strip), meter);
  });
}

/// Step i of the rows below it down to `lastRow`, in the columns up to `right`. Rows that stand
/// together are eliminated together.
void GrowingElimination::TakeStep(int i, int lastRow, int right) {
  int top = i + 1;
  for (int k = i + 1; k <= lastRow; ++k) {
    const bool plain = !HasEnded(k) && W_(i, i) != 0 && !(std::abs(W_(k, i)) > std::abs(W_(i, i)));
    if (plain) continue;
    EliminateBetween(i, top, k - 1, right);
    TakeRowStep(k, i, right);
    top = k + 1;
  }
  EliminateBetween(i, top, lastRow, right);
}

/// Step i of row k, in the columns up to `right`.
void GrowingElimination::TakeRowStep(int k, int i, int right) {
  if (HasEnded(k)) return;
  if (std::abs(W_(k, i)) > std::abs(W_(i, i))) {
    std::swap_ranges(&W_(i, i), &W_(i, i) + (right - i + 1), &W_(k, i));
    changes_.push_back({k, i, W_(i, i)});
  }
  if (W_(i, i) == 0) {
    if (endedAt_.IsEmpty()) endedAt_ = Vector<int>(n_);
    endedAt_(k) = i;
    return;
  }
  EliminateBetween(i, k, k, right);
}

void GrowingElimination::EliminateBetween(int i, int top, int bottom, int right) {
  if (top > bottom) return;
  EliminateRows(&W_(i, i), &W_(top, i), W_.Cols(), bottom - top + 1, 0, right - i);
  meter_.Add(1.0 * (bottom - top + 1) * (right - i));
}

/// The steps first..last of some of the rows top..bottom, in these columns; returns the first row
/// that is left.
int GrowingElimination::TakeGroup(int top, int bottom, int first, int last) {
  int all = 0;
  while (top + all <= bottom && !HasEnded(top + all)) ++all;
  const int steps = last - first + 1;
  // In front of the numbers of the rows stands the pivot of the column.
  const View panel = Part(panel_, 1, 1, steps, all + 1);
  for (int s = 0; s < steps; ++s) panel(s, 0) = W_(first + s, first + s);
  int rows = 0;
  if (all > 0) {
    CurrentKernels().transpose(
        {&W_(top, first), W_.Cols(), all, steps, &panel(0, 1), panel.rowStride});
    rows = TakeInOwnColumns(panel, first);
  }
  if (rows > 0) {
    CurrentKernels().transpose(
        {&panel(0, 1), panel.rowStride, steps, rows, &W_(top, first), W_.Cols()});
    taken_.push_back({top, rows, first, last});
  }
  const int next = top + rows;
  if (next > bottom) return next;
  if (HasEnded(next)) return next + 1;
  const std::size_t changesBefore = changes_.size();
  for (int i = first; i <= last; ++i) TakeRowStep(next, i, last);
  RecordRow(next, first, last, changesBefore);
  return next + 1;
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

/// What the rows first..last have done, as the changes since then tell.
void GrowingElimination::RecordUpperRows(int first, int last, std::size_t changesBefore) {
  if (changes_.size() == changesBefore && endedAt_.IsEmpty()) {
    for (int row = first; row <= last; row += kPanelColumns) {
      const int rows = std::min(kPanelColumns, last - row + 1);
      if (row > first) taken_.push_back({row, rows, first, row - 1});
      taken_.push_back({row, rows, row, row + rows - 1});
    }
    return;
  }
  for (int k = first + 1; k <= last; ++k) RecordRow(k, first, k - 1, changesBefore);
}

/// The steps first..last of row k.
void GrowingElimination::RecordRow(int k, int first, int last, std::size_t changesBefore) {
  RowSteps steps{k, 1, first, last};
  for (std::size_t at = changesBefore; at < changes_.size(); ++at) {
    const DiagonalChange& change = changes_[at];
    if (change.row != k) continue;
    steps.last = change.i - 1;
    if (steps.first <= steps.last) taken_.push_back(steps);
    steps = {k, 1, change.i, last, true};
  }
  if (HasEnded(k)) steps.last = std::min(last, endedAt_(k) - 1);
  if (steps.first <= steps.last) taken_.push_back(steps);
}

/// The columns from..to take the steps that those of the block have taken.
void GrowingElimination::Follow(int from, int to, WorkMeter& meter) {
  const int cols = to - from + 1;
  for (const auto& [row, rows, first, last, exchanged] : taken_) {
    const View place = Part(W_, row, from, rows, cols);
    if (row == first) {
      EliminatePivotRows(Part(std::as_const(W_), row, row, rows, rows), place);
      meter.Add(0.5 * rows * rows * cols);
      continue;
    }
    if (exchanged) SwapNumbers(&W_(first, from), &W_(row, from), cols);
    SubtractProduct(Part(std::as_const(W_), row, first, rows, last - first + 1),
                    Part(std::as_const(W_), first, from, last - first + 1, cols), place, meter);
  }
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

DefinitenessReport TestDefiniteness(const Matrix& A, Progress& progress, const BlockSizes& sizes) {
  const int n = A.Rows();
  RequireElement(n >= 1);
  Matrix W = WorkCopy(A, sizes.work);
  DefinitenessReport report;
  report.leadingMinor = std::vector<double>(n);
  report.smallestPivot = std::vector<double>(n);
  WorkMeter meter(progress, EliminationWork(n, n, n));
  GrowingElimination elimination(W, meter, sizes);
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
