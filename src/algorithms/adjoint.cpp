// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>
#include <vector>

#include "algorithms/elimination.h"
#include "algorithms/inverse.h"
#include "algorithms/ordered_product.h"
#include "algorithms/pivot_search.h"
#include "algorithms/shared_work.h"
#include "base/vector.h"

// The minors of a matrix share most of their eliminations. Up to column j the minor without row i
// and column j takes the same steps as the whole matrix, until row i would be the pivot. So the
// whole matrix is eliminated once, and at each step two branches leave this road:
//
//   - without the column of the step, for all rows that have not been a pivot yet; on that branch
//     again one minor leaves at each step, the one without the row of the pivot;
//   - without the row of the pivot, for all later columns; on that branch again one minor leaves at
//     each step, the one without the column of the step.
//
// That makes n^5/30 multiplications instead of n^5/3. Where a minor leaves, its rows are put into
// the order in which the exchanges of its own elimination would have left them, and the elimination
// goes on by itself. So every minor takes the very steps that it would take alone. Only where equal
// magnitudes compete for a pivot, or none is left, can that depend on a row that is deleted later:
// then the minors of the branch are taken one by one.
//
// What the road of the whole matrix still needs lies in the places of the minors still to come, so
// that there is no work matrix but the one branch that is open and the minor that leaves it. Where
// a team shares the work, the road goes some steps ahead and leaves a copy of itself at each of
// them; then the members take the branches of all these steps.

namespace qmx {
namespace {

/// Where an elimination has come to. Rows have the numbers that they have in A, from 1.
struct Road {
  std::vector<int> rows;    ///< Those that have not been a pivot.
  std::vector<int> pivots;  ///< The pivot rows, in order.
  double product = 1.0;     ///< Of the pivots.

  /// Makes rows[p] the next pivot row.
  void TakePivot(int p, double pivot) {
    std::swap(rows[0], rows[p]);
    pivots.push_back(rows[0]);
    rows.erase(rows.begin());
    product *= pivot;
  }
};

/// The place of the largest magnitude of `count` elements; -1 where it is not the only one, where
/// it is zero, or where some element is not a number to compare.
template <class Element>
int OnlyPivot(int count, Element element) {
  bool finite = true;
  const LargestElement found = FindLargest(count, [&](int k) {
    const double x = element(k);
    finite = finite && std::isfinite(x);
    return x;
  });
  return finite && found.only && found.magnitude != 0 ? found.place : -1;
}

/// The place of the largest magnitude in the first column, the upper one of equals; -1 where all
/// are zero.
int UpperPivot(const View& block) {
  const LargestElement found = FindLargest(block.rows, [&block](int k) { return block(k, 0); });
  return found.magnitude == 0 ? -1 : found.place;
}

/// Takes the step with row p as the pivot row; what is left is the block without the row and the
/// first column.
void TakeStep(View& block, int p, WorkMeter& meter) {
  double* const pivot = block.first;
  if (p != 0) std::swap_ranges(pivot, pivot + block.cols, &block(p, 0));
  const int below = block.rows - 1;
  const int right = block.cols - 1;
  if (below > 0) {
    EliminateRows(pivot, pivot + block.rowStride, block.rowStride, below, 0, right);
    meter.Add(1.0 * below * right);
  }
  double* const rest = below > 0 && right > 0 ? &block(1, 1) : nullptr;
  block = {rest, below, right, block.rowStride, 1};
}

/// The cofactor of row i and column j, by itself; its minor is worked out in `minor`, a matrix of
/// its size.
double Alone(const Matrix& A, int i, int j, Matrix& minor, WorkMeter& meter,
             const EliminationSizes& sizes) {
  const int n = A.Rows();
  for (int k = 1; k < n; ++k) {
    const double* const from = A.Row(k < i ? k : k + 1);
    double* const to = minor.Row(k);
    for (int l = 1; l < n; ++l) to[l - 1] = from[l < j ? l - 1 : l];
  }
  return AlternatingSign(i + j) * ReduceToDeterminant(minor, meter, sizes);
}

Matrix AllAlone(const Matrix& A, WorkMeter& meter, const EliminationSizes& sizes) {
  const int n = A.Rows();
  Matrix adjoint = Matrix::Unset(n, n);
  Matrix minor = Matrix::Unset(n - 1, n - 1);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) adjoint(j, i) = Alone(A, i, j, minor, meter, sizes);
  }
  return adjoint;
}

/// The road of the whole matrix at one of its steps, where two branches leave it.
struct Crossing {
  Road road;
  int column = 0;                  ///< Of the step.
  int pivot = -1;                  ///< The place of its pivot row, -1 where the road ends here.
  Vector<double> numbers;          ///< Of the column, by the row.
  const Matrix* matrix = nullptr;  ///< Has the rows of the road behind the column.

  int PivotRow() const { return road.rows[pivot]; }
  const double* Behind(int row) const { return matrix->Row(row) + column; }
};

/// What leaves the road of the whole matrix, with the work matrices of one member of the team.
class Branches {
 public:
  Branches(const Matrix& A, Matrix& cofactors, const EliminationSizes& sizes)
      : A_(A), cofactors_(cofactors), sizes_(sizes), n_(A.Rows()), order_(n_), placeOf_(n_) {}

  void WithoutColumn(const Crossing& crossing, WorkMeter& meter);
  void WithoutRow(const Crossing& crossing, WorkMeter& meter);
  void TakeOneByOne(const std::vector<int>& rows, int firstColumn, int lastColumn,
                    WorkMeter& meter);

 private:
  int OrderWithout(int i, const std::vector<int>& pivots);
  View NewBranch(int rows, int cols);
  void FinishWithoutRow(int i, int j, const View& block, WorkMeter& meter);
  void Finish(int i, int j, double product, int exchanges, WorkMeter& meter);

  const Matrix& A_;
  Matrix& cofactors_;
  const EliminationSizes& sizes_;
  const int n_;
  Road branch_;  ///< The one without a column.
  Matrix branchRows_;
  Matrix minor_;
  Vector<int> order_;    ///< Of the rows without a certain one.
  Vector<int> placeOf_;  ///< Of each row among them.
};

/// The road of the whole matrix.
class Cofactors {
 public:
  Cofactors(const Matrix& A, WorkMeter& meter, const BlockSizes& sizes);
  Matrix Run();

 private:
  void RunAlone();
  void RunShared();
  void Arrive(Crossing& crossing);
  void TakeStep(const Crossing& crossing);
  void TakeRest(const Crossing& end);

  WorkMeter& meter_;
  const int n_;
  /// The cofactors, each in the place of its element. Where they are still to come: the rows of the
  /// road behind the column of its step.
  Matrix cofactors_;
  Road road_;
  int column_ = 1;
  Vector<double> pivotRow_;
  std::vector<Branches> members_;
};

Cofactors::Cofactors(const Matrix& A, WorkMeter& meter, const BlockSizes& sizes)
    : meter_(meter),
      n_(A.Rows()),
      cofactors_(A),
      pivotRow_(n_),
      members_(n_ >= sizes.cofactors.shareFrom && Team::Member() == 0 ? SharedTeam().Members() : 1,
               Branches(A, cofactors_, sizes.elimination)) {
  road_.rows.resize(n_);
  std::iota(road_.rows.begin(), road_.rows.end(), 1);
}

Matrix Cofactors::Run() {
  if (members_.size() > 1) {
    RunShared();
  } else {
    RunAlone();
  }
  for (int i = 1; i <= n_; ++i) {
    for (int j = 1; j < i; ++j) std::swap(cofactors_(i, j), cofactors_(j, i));
  }
  return std::move(cofactors_);
}

void Cofactors::RunAlone() {
  Crossing crossing;
  crossing.matrix = &cofactors_;
  for (;;) {
    Arrive(crossing);
    members_[0].WithoutColumn(crossing, meter_);
    if (crossing.pivot < 0) break;
    members_[0].WithoutRow(crossing, meter_);
    TakeStep(crossing);
  }
  TakeRest(crossing);
}

void Cofactors::RunShared() {
  constexpr std::size_t kStepsForEach = 4;
  constexpr std::size_t kMostSteps = 16;
  const std::size_t most = std::min(kStepsForEach * members_.size(), kMostSteps);
  std::vector<Matrix> copies(most);
  std::vector<Crossing> crossings;
  do {
    crossings.clear();
    do {
      Crossing& crossing = crossings.emplace_back();
      Arrive(crossing);
      copies[crossings.size() - 1] = cofactors_;
      crossing.matrix = &copies[crossings.size() - 1];
      if (crossing.pivot >= 0) TakeStep(crossing);
    } while (crossings.size() < most && crossings.back().pivot >= 0);
    const int branches = 2 * static_cast<int>(crossings.size());
    SharePieces(meter_, branches, [&](int piece, WorkMeter& meter) {
      const Crossing& crossing = crossings[piece / 2];
      Branches& own = members_[Team::Member()];
      if (piece % 2 == 0) {
        own.WithoutColumn(crossing, meter);
      } else if (crossing.pivot >= 0) {
        own.WithoutRow(crossing, meter);
      }
    });
  } while (crossings.back().pivot >= 0);
  TakeRest(crossings.back());
}

/// Describes where the road has come to.
void Cofactors::Arrive(Crossing& crossing) {
  crossing.road = road_;
  crossing.column = column_;
  crossing.numbers = Vector<double>(n_);
  for (const int row : road_.rows) crossing.numbers(row) = cofactors_(row, column_);
  crossing.pivot = column_ == n_ ? -1 : OnlyPivot(n_ - column_ + 1, [&](int k) {
    return crossing.numbers(road_.rows[k]);
  });
  if (crossing.pivot < 0) return;
  // Minors without this row take its place in a moment.
  for (int l = column_ + 1; l <= n_; ++l) pivotRow_(l) = cofactors_(crossing.PivotRow(), l);
}

/// Takes the step of a crossing.
void Cofactors::TakeStep(const Crossing& crossing) {
  const int i = crossing.PivotRow();
  const Vector<double>& column = crossing.numbers;
  road_.TakePivot(crossing.pivot, column(i));
  // The step is taken for minors without one of the rows left: not for a last one.
  for (const int row : road_.rows) {
    if (road_.rows.size() == 1) break;
    const double f = column(row) / column(i);
    for (int l = column_ + 1; l <= n_; ++l) cofactors_(row, l) -= f * pivotRow_(l);
  }
  ++column_;
}

/// All minors that leave the road behind its end, one by one.
void Cofactors::TakeRest(const Crossing& end) {
  const std::vector<int>& rows = end.road.rows;
  if (members_.size() == 1) return members_[0].TakeOneByOne(rows, end.column + 1, n_, meter_);
  SharePieces(meter_, static_cast<int>(rows.size()), [&](int piece, WorkMeter& meter) {
    members_[Team::Member()].TakeOneByOne({rows[piece]}, end.column + 1, n_, meter);
  });
}

/// All minors without the column of the step and without one of the rows that are left on the road.
void Branches::WithoutColumn(const Crossing& crossing, WorkMeter& meter) {
  const int j = crossing.column;
  branch_ = crossing.road;
  View block = NewBranch(n_ - j + 1, n_ - j);
  for (int k = 0; k < block.rows; ++k) {
    std::copy_n(crossing.Behind(branch_.rows[k]), block.cols, block.first + k * block.rowStride);
  }
  while (block.cols > 0) {
    const int p = OnlyPivot(block.rows, [&block](int k) { return block(k, 0); });
    if (p < 0) {
      TakeOneByOne(branch_.rows, j, j, meter);
      return;
    }
    FinishWithoutRow(branch_.rows[p], j, block, meter);
    branch_.TakePivot(p, block(p, 0));
    qmx::TakeStep(block, p, meter);
  }
  FinishWithoutRow(branch_.rows[0], j, block, meter);
}

/// All minors without the pivot row of the step and without one of the columns behind. The rows lie
/// in the order of these minors, so nothing can depend on a deleted one.
void Branches::WithoutRow(const Crossing& crossing, WorkMeter& meter) {
  const int i = crossing.PivotRow();
  int column = crossing.column;
  int exchanges = OrderWithout(i, crossing.road.pivots);
  double product = crossing.road.product;
  View block = NewBranch(n_ - column, n_ - column + 1);
  for (int k = 0; k < block.rows; ++k) {
    const int row = order_(column + k);
    block(k, 0) = crossing.numbers(row);
    std::copy_n(crossing.Behind(row), block.cols - 1, &block(k, 1));
  }
  while (block.rows > 0) {
    const int p = UpperPivot(block);
    if (p < 0) {
      TakeOneByOne({i}, column + 1, n_, meter);
      return;
    }
    if (p != 0) ++exchanges;
    product *= block(p, 0);
    qmx::TakeStep(block, p, meter);
    ++column;
    minor_.Reuse(block.rows, block.rows);
    for (int k = 0; k < block.rows; ++k) {
      std::copy_n(&block(k, 1), block.rows, minor_.Row(k + 1));
    }
    Finish(i, column, product, exchanges, meter);
  }
}

/// Leaves in order_ the rows without row i as the exchanges of their own elimination leave them
/// when it has used these pivots. Returns the number of exchanges.
int Branches::OrderWithout(int i, const std::vector<int>& pivots) {
  int places = 1;
  for (int row = 1; row <= n_; ++row) {
    placeOf_(row) = places;
    order_(places) = row;
    if (row != i) ++places;
  }
  int exchanges = 0;
  int step = 0;
  for (const int pivot : pivots) {
    const int place = placeOf_(pivot);
    if (place == ++step) continue;
    std::swap(order_(step), order_(place));
    placeOf_(order_(place)) = place;
    ++exchanges;
  }
  return exchanges;
}

View Branches::NewBranch(int rows, int cols) {
  branchRows_.Reuse(rows, cols);
  return Part(branchRows_, 1, 1, rows, cols);
}

/// The minor without row i and column j, of which the branch has all steps but the last ones.
void Branches::FinishWithoutRow(int i, int j, const View& block, WorkMeter& meter) {
  const int exchanges = OrderWithout(i, branch_.pivots);
  for (int k = 0; k < block.rows; ++k) placeOf_(branch_.rows[k]) = k;
  const int done = static_cast<int>(branch_.pivots.size());
  minor_.Reuse(block.cols, block.cols);
  for (int k = 1; k <= block.cols; ++k) {
    std::copy_n(&block(placeOf_(order_(done + k)), 0), block.cols, minor_.Row(k));
  }
  Finish(i, j, branch_.product, exchanges, meter);
}

/// The cofactor of row i and column j. Its minor has been eliminated up to minor_, with these
/// pivots and exchanges.
void Branches::Finish(int i, int j, double product, int exchanges, WorkMeter& meter) {
  const int m = minor_.Rows();
  const Elimination done =
      Eliminate(minor_, m - 1, PivotRule::kStopAtZeroColumn, meter, nullptr, sizes_);
  for (int k = 1; k <= m; ++k) product *= minor_(k, k);
  cofactors_(i, j) =
      AlternatingSign(i + j) * (AlternatingSign(exchanges + done.exchanges) * product);
}

void Branches::TakeOneByOne(const std::vector<int>& rows, int firstColumn, int lastColumn,
                            WorkMeter& meter) {
  minor_.Reuse(n_ - 1, n_ - 1);
  const double minors = 1.0 * static_cast<double>(rows.size()) * (lastColumn - firstColumn + 1);
  meter.Expect(minors * EliminationWork(n_ - 1, n_ - 1, n_ - 1));
  for (const int i : rows) {
    for (int j = firstColumn; j <= lastColumn; ++j)
      cofactors_(i, j) = Alone(A_, i, j, minor_, meter, sizes_);
  }
}

}  // namespace

Matrix AdjointByCofactors(const Matrix& A, Progress& progress, const BlockSizes& sizes) {
  if (A.Rows() == 0) return Matrix();
  // The minors that leave a branch need n^5/60 multiplications, and so do the branches themselves.
  const double n = A.Rows();
  WorkMeter meter(progress, n * n * n * n * n / 30);
  Matrix adjoint = A.Rows() <= sizes.cofactors.smallOrder ? AllAlone(A, meter, sizes.elimination)
                                                          : Cofactors(A, meter, sizes).Run();
  meter.End();
  return adjoint;
}

}  // namespace qmx
