// SPDX-License-Identifier: MIT
#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

#include "algorithms/cofactor_branches.h"
#include "algorithms/inverse.h"
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

Matrix AllAlone(const Matrix& A, WorkMeter& meter, const EliminationSizes& sizes) {
  const int n = A.Rows();
  Matrix adjoint = Matrix::Unset(n, n);
  Matrix minor = Matrix::Unset(n - 1, n - 1);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) adjoint(j, i) = Cofactor(A, i, j, minor, meter, sizes);
  }
  return adjoint;
}

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
  PerMember<Branches> members_;
};

Cofactors::Cofactors(const Matrix& A, WorkMeter& meter, const BlockSizes& sizes)
    : meter_(meter),
      n_(A.Rows()),
      cofactors_(A),
      pivotRow_(n_),
      members_(n_ >= sizes.cofactors.shareFrom, Branches(A, cofactors_, sizes.elimination)) {
  road_.rows.resize(n_);
  std::iota(road_.rows.begin(), road_.rows.end(), 1);
}

Matrix Cofactors::Run() {
  if (members_.IsShared()) {
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
    members_.Own().WithoutColumn(crossing, meter_);
    if (crossing.pivot < 0) break;
    members_.Own().WithoutRow(crossing, meter_);
    TakeStep(crossing);
  }
  TakeRest(crossing);
}

void Cofactors::RunShared() {
  constexpr std::size_t kStepsForEach = 4;
  constexpr std::size_t kMostSteps = 16;
  const std::size_t most =
      std::min(kStepsForEach * static_cast<std::size_t>(SharedTeam().Members()), kMostSteps);
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
      Branches& own = members_.Own();
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
  if (!members_.IsShared()) return members_.Own().TakeOneByOne(rows, end.column + 1, n_, meter_);
  SharePieces(meter_, static_cast<int>(rows.size()), [&](int piece, WorkMeter& meter) {
    members_.Own().TakeOneByOne({rows[piece]}, end.column + 1, n_, meter);
  });
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
