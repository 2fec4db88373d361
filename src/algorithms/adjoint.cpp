#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>
#include <vector>

#include "algorithms/elimination.h"
#include "algorithms/inverse.h"
#include "algorithms/ordered_product.h"

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

namespace qmx {
namespace {

// Up to here the bookkeeping of branches takes longer than it saves.
constexpr int kSmallOrder = 9;

/// Where an elimination has come to: the rows of `block` are those that have not been a pivot, its
/// columns those still to come.
struct Road {
  std::vector<int> rows;    ///< Number in A of each row of the block, from 0.
  std::vector<int> pivots;  ///< Numbers in A of the pivot rows, in order.
  double product = 1.0;     ///< Of the pivots.
  int exchanges = 0;
  Matrix block;
};

/// The place of the largest magnitude in the first column, from 1; 0 where it is not the only one,
/// where it is zero, or where some element is not a number to compare.
int OnlyPivot(const Matrix& block) {
  int p = 1;
  bool only = true;
  for (int k = 1; k <= block.Rows(); ++k) {
    const double magnitude = std::abs(block(k, 1));
    if (!std::isfinite(magnitude)) return 0;
    if (k == p) continue;
    if (magnitude == std::abs(block(p, 1))) only = false;
    if (magnitude > std::abs(block(p, 1))) {
      p = k;
      only = true;
    }
  }
  return only && block(p, 1) != 0 ? p : 0;
}

/// The place of the largest magnitude in the first column, the upper one of equals; 0 where all are
/// zero.
int UpperPivot(const Matrix& block) {
  int p = 1;
  for (int k = 2; k <= block.Rows(); ++k) {
    if (std::abs(block(k, 1)) > std::abs(block(p, 1))) p = k;
  }
  return block(p, 1) == 0 ? 0 : p;
}

Matrix WithoutFirstColumn(const Matrix& block) {
  const int cols = block.Cols() - 1;
  Matrix rest(block.Rows(), cols);
  for (int k = 1; k <= block.Rows() && cols > 0; ++k) {
    std::copy_n(block.Row(k) + 1, cols, rest.Row(k));
  }
  return rest;
}

/// Makes row p of the block the next pivot row. The rows below take the step where that is asked
/// for.
void TakeStep(Road& road, int p, bool needed) {
  Matrix& block = road.block;
  block.SwapRows(1, p);
  if (!road.rows.empty()) {
    std::swap(road.rows[0], road.rows[p - 1]);
    road.pivots.push_back(road.rows[0]);
    road.rows.erase(road.rows.begin());
  }
  road.product *= block(1, 1);
  const int below = block.Rows() - 1;
  const int right = block.Cols() - 1;
  Matrix rest(below, right);
  for (int k = 1; k <= below && right > 0; ++k) {
    std::copy_n(block.Row(k + 1) + 1, right, rest.Row(k));
  }
  if (needed && below > 0) {
    for (int k = 2; k <= below + 1; ++k) block(k, 1) /= block(1, 1);
    SubtractProduct(Part(std::as_const(block), 2, 1, below, 1),
                    Part(std::as_const(block), 1, 2, 1, right), Part(rest, 1, 1, below, right));
  }
  block = std::move(rest);
}

class Cofactors {
 public:
  explicit Cofactors(const Matrix& A) : A_(A), n_(A.Rows()), adjoint_(n_, n_) {}

  Matrix Run(Progress& progress);

 private:
  void WithoutColumn(Road road, int j);
  void WithoutRow(int i, Road road, int firstColumn);
  Road Branch(const Road& road, int i) const;
  void Finish(int i, int j, Road road);

  void TakeOneByOne(const std::vector<int>& rows, int firstColumn, int lastColumn);
  void TakeOneByOne(Matrix& minor, int i, int firstColumn, int lastColumn);
  void Store(int i, int j, double minor) { adjoint_(j, i) = AlternatingSign(i + j) * minor; }

  const Matrix& A_;
  const int n_;
  Matrix adjoint_;
  Progress unheard_;
};

Matrix Cofactors::Run(Progress& progress) {
  if (n_ <= kSmallOrder) {
    Matrix minor(n_ - 1, n_ - 1);
    for (int i = 1; i <= n_; ++i) TakeOneByOne(minor, i, 1, n_);
    return std::move(adjoint_);
  }
  Road road;
  road.rows.resize(n_);
  std::iota(road.rows.begin(), road.rows.end(), 1);
  road.block = A_;
  for (int c = 1; c <= n_; ++c) {
    Road branch = road;
    branch.block = WithoutFirstColumn(road.block);
    WithoutColumn(std::move(branch), c);
    progress.Report(1.0 - std::pow(1.0 - static_cast<double>(c) / n_, 5));
    if (c == n_) break;
    const int p = OnlyPivot(road.block);
    if (p == 0) {
      TakeOneByOne(road.rows, c + 1, n_);
      break;
    }
    const int i = road.rows[p - 1];
    WithoutRow(i, Branch(road, i), c);
    // The step is taken for minors without one of the rows below: not for a last one.
    TakeStep(road, p, road.block.Rows() > 2);
  }
  return std::move(adjoint_);
}

/// All minors without column j and without one of the rows of the block, which has one too many.
void Cofactors::WithoutColumn(Road road, int j) {
  while (road.block.Cols() > 0) {
    const int p = OnlyPivot(road.block);
    if (p == 0) {
      TakeOneByOne(road.rows, j, j);
      return;
    }
    const int i = road.rows[p - 1];
    Finish(i, j, Branch(road, i));
    TakeStep(road, p, road.block.Rows() > 2);
  }
  const int last = road.rows.front();
  Finish(last, j, Branch(road, last));
}

/// All minors without row i and without one of the columns behind `column`, the first of the block.
/// The rows lie in the order of these minors, so nothing can depend on a deleted one.
void Cofactors::WithoutRow(int i, Road road, int column) {
  while (road.block.Rows() > 0) {
    const int p = UpperPivot(road.block);
    if (p == 0) {
      TakeOneByOne({i}, column + 1, n_);
      return;
    }
    if (p != 1) ++road.exchanges;
    TakeStep(road, p, true);
    ++column;
    Road minor;
    minor.product = road.product;
    minor.exchanges = road.exchanges;
    minor.block = WithoutFirstColumn(road.block);
    Finish(i, column, std::move(minor));
  }
}

/// The road of the minors without row i: their rows in the order in which their own exchanges leave
/// them.
Road Cofactors::Branch(const Road& road, int i) const {
  std::vector<int> order;  // Of the rows, before and after the exchanges.
  std::vector<int> placeOf(n_ + 1);
  order.reserve(n_);
  for (int row = 1; row <= n_; ++row) {
    placeOf[row] = static_cast<int>(order.size());
    if (row != i) order.push_back(row);
  }
  Road branch;
  branch.product = road.product;
  const int steps = static_cast<int>(road.pivots.size());
  for (int step = 0; step < steps; ++step) {
    const int place = placeOf[road.pivots[step]];
    if (place == step) continue;
    std::swap(order[step], order[place]);
    placeOf[order[place]] = place;
    ++branch.exchanges;
  }
  for (std::size_t k = 0; k < road.rows.size(); ++k)
    placeOf[road.rows[k]] = static_cast<int>(k) + 1;
  const int rows = static_cast<int>(order.size()) - steps;
  branch.block = Matrix(rows, road.block.Cols());
  for (int k = 1; k <= rows && road.block.Cols() > 0; ++k) {
    std::copy_n(road.block.Row(placeOf[order[steps + k - 1]]), road.block.Cols(),
                branch.block.Row(k));
  }
  return branch;
}

/// The minor without row i and column j, of which `road` has everything but the last steps.
void Cofactors::Finish(int i, int j, Road road) {
  const int m = road.block.Rows();
  const Elimination done =
      Eliminate(road.block, std::max(0, m - 1), PivotRule::kStopAtZeroColumn, unheard_);
  double minor = road.product;
  for (int k = 1; k <= m; ++k) minor *= road.block(k, k);
  Store(i, j, AlternatingSign(road.exchanges + done.exchanges) * minor);
}

void Cofactors::TakeOneByOne(const std::vector<int>& rows, int firstColumn, int lastColumn) {
  Matrix minor(n_ - 1, n_ - 1);
  for (const int i : rows) TakeOneByOne(minor, i, firstColumn, lastColumn);
}

void Cofactors::TakeOneByOne(Matrix& minor, int i, int firstColumn, int lastColumn) {
  for (int j = firstColumn; j <= lastColumn; ++j) {
    double* to = minor.Data();
    for (int k = 1; k <= n_; ++k) {
      if (k == i) continue;
      const double* row = A_.Row(k);
      for (int l = 0; l < j - 1; ++l) *to++ = row[l];
      for (int l = j; l < n_; ++l) *to++ = row[l];
    }
    Store(i, j, ReduceToDeterminant(minor, unheard_));
  }
}

}  // namespace

Matrix AdjointByCofactors(const Matrix& A, Progress& progress) {
  if (A.Rows() == 0) return Matrix();
  return Cofactors(A).Run(progress);
}

}  // namespace qmx
