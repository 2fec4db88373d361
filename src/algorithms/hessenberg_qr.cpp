#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "algorithms/hessenberg.h"
#include "algorithms/ordered_product.h"
#include "algorithms/projection.h"

// Gram-Schmidt on a Hessenberg matrix goes like that on a full one: once the left half of a block
// of columns is final, all projections on it go over the right half at once. Column k of V ends
// with row k + 1, so a block of V is a full rectangle with a small trapezium below:
//
//        first    last
//       +-------------+
//       |             |            What is triangular is cut into strips of the height of a tile;
//       |             |            within a strip the zeros beyond the triangle are taken along.
//       +--+          | first + 1
//       |  +--+       |
//       +-----+-------+ last + 1
//
// Every sum and every element takes its steps in the order of the textbook loop. A zero that takes
// part makes no difference to a sum that started at 0. To an element of V it can, where that is a
// zero itself: its sign. But V, or Q after it, ends in no other place than as a factor in such
// sums.

namespace qmx {
namespace {

// Height of the strips that a triangle is cut into.
constexpr int kTile = 16;

class HessenbergStep {
 public:
  HessenbergStep(Matrix& M, int n, HessenbergQr& work)
      : M_(M),
        V_(work.V),
        R_(work.R),
        coefficients_(work.C),
        n_(n),
        squaredNorm_(work.squaredNorm) {}

  void RunInBlocks();
  void RunColumnByColumn();

 private:
  int Length(int j) const { return std::min(j + 1, n_); }

  void FinishColumns(int first, int last);
  void FinishColumn(int j, int last);
  template <int kCount>
  void ProjectNext(int j, int from);
  void Project(int first, int last, int from, int to);
  void Subtract(int first, int last, int from, int to);
  void FillQ();
  void MultiplyFactors();
  void MultiplyRow(int i);
  void MultiplyRows(int first, int last);

  Matrix& M_;
  Matrix& V_;
  Matrix& R_;
  Matrix& coefficients_;
  const int n_;
  std::vector<double>& squaredNorm_;
};

void HessenbergStep::RunInBlocks() {
  for (int i = 1; i <= n_; ++i) {
    const int from = std::max(1, i - 1);
    std::copy(M_.Row(i) + (from - 1), M_.Row(i) + n_, V_.Row(i) + (from - 1));
  }
  FinishColumns(1, n_);
  FillQ();
  MultiplyFactors();
}

/// Without the kernel and what it needs.
void HessenbergStep::RunColumnByColumn() {
  for (int j = 1; j <= n_; ++j) {
    for (int i = 1; i <= Length(j); ++i) V_(i, j) = M_(i, j);
  }
  for (int j = 1; j <= n_; ++j) FinishColumn(j, n_);
  FillQ();
  for (int i = 1; i <= n_; ++i) MultiplyRow(i);
}

void HessenbergStep::FinishColumns(int first, int last) {
  const int columns = last - first + 1;
  if (columns <= kColumnsAtOnce) {
    for (int j = first; j <= last; ++j) FinishColumn(j, last);
    return;
  }
  const int middle = first + LeftHalf(columns) - 1;
  FinishColumns(first, middle);
  for (int from = middle + 1; from <= last; from += HessenbergQr::kStrip) {
    Project(first, middle, from, std::min(from + HessenbergQr::kStrip - 1, last));
  }
  FinishColumns(middle + 1, last);
}

/// Column j, which nothing is to be subtracted from any more: its norm, and the projections of the
/// columns up to `last` on it.
void HessenbergStep::FinishColumn(int j, int last) {
  int from = j + 1;
  for (; from + 3 <= last; from += 4) ProjectNext<4>(j, from);
  switch (last - from) {
    case 2:
      return ProjectNext<3>(j, from);
    case 1:
      return ProjectNext<2>(j, from);
    case 0:
      return ProjectNext<1>(j, from);
    default:
      if (from == j + 1) ProjectNext<0>(j, from);
  }
}

/// Projects the kCount columns from column `from` on on column j. The first time that takes the
/// norm of column j as well.
template <int kCount>
void HessenbergStep::ProjectNext(int j, int from) {
  double d[kCount + 1];
  NormAndDots<kCount>(&V_(1, j), &M_(1, from) - 1, V_.Cols(), Length(j), d);
  double* const r = &R_(j, from) - 1;
  if (from == j + 1) {
    squaredNorm_[j] = d[0];
    r[0] = std::sqrt(d[0]);
  }
  if (d[0] == 0) {
    std::fill_n(r + 1, kCount, 0.0);
    return;
  }
  const double norm = R_(j, j);
  for (int t = 1; t <= kCount; ++t) {
    r[t] = d[t] / norm;
    d[t] /= d[0];
  }
  SubtractMultiples<kCount>(&V_(1, j), &V_(1, from) - 1, V_.Cols(), Length(j), d);
}

/// Projects the columns from..to of M on the final columns first..last. The multiples of a column
/// that vanished count as 0.
void HessenbergStep::Project(int first, int last, int from, int to) {
  const int cols = to - from + 1;
  for (int top = first; top <= last; top += kTile) {
    const int bottom = std::min(top + kTile - 1, last);
    const int steps = bottom - top + 1;
    SetProduct(ConstView(Part(V_, 1, top, bottom + 1, steps)).Transposed(),
               Part(M_, 1, from, bottom + 1, cols), Part(R_, top, from, steps, cols));
  }
  for (int k = first; k <= last; ++k) {
    double* const d = &R_(k, from);
    double* const c = coefficients_.Row(k - first + 1);
    if (squaredNorm_[k] == 0) {
      std::fill_n(d, cols, 0.0);
      std::fill_n(c, cols, 0.0);
    } else {
      std::copy_n(d, cols, c);
      DivideBy(squaredNorm_[k], c, cols);
      DivideBy(R_(k, k), d, cols);
    }
  }
  Subtract(first, last, from, to);
}

/// V(i,j) = V(i,j) - C(k,j)·V(i,k) in the columns from..to. Row 1 of C belongs to column `first`.
void HessenbergStep::Subtract(int first, int last, int from, int to) {
  const int cols = to - from + 1;
  const int all = last - first + 1;
  SubtractProduct(Part(V_, 1, first, first + 1, all), Part(coefficients_, 1, 1, all, cols),
                  Part(V_, 1, from, first + 1, cols));
  for (int top = first + 2; top <= last + 1; top += kTile) {
    const int rows = std::min(kTile, last + 2 - top);
    const int steps = last - top + 2;
    SubtractProduct(Part(V_, top, top - 1, rows, steps),
                    Part(coefficients_, top - first, 1, steps, cols),
                    Part(V_, top, from, rows, cols));
  }
}

/// Q takes the place of V. A column that vanishes becomes 0.
void HessenbergStep::FillQ() {
  double* const norm = squaredNorm_.data();
  for (int j = 1; j <= n_; ++j) {
    norm[j] = R_(j, j);
    if (norm[j] != 0) continue;
    for (int i = 1; i <= Length(j); ++i) V_(i, j) = 0;
    norm[j] = 1;
  }
  for (int i = 1; i <= n_; ++i) {
    const int from = std::max(1, i - 1);
    DivideByEach(norm + from, &V_(i, from), n_ - from + 1);
  }
}

/// M := R·Q on and right of the subdiagonal. Row i of R begins with column i, row m of Q with
/// column m - 1, row i of M with column i - 1; in front of these there are zeros.
void HessenbergStep::MultiplyFactors() {
  for (int first = 1; first <= n_; first += kTile) {
    MultiplyRows(first, std::min(first + kTile - 1, n_));
  }
}

/// The textbook loop itself, for one row.
void HessenbergStep::MultiplyRow(int i) {
  for (int j = std::max(1, i - 1); j <= n_; ++j) {
    double sum = 0.0;
    for (int m = i; m <= Length(j); ++m) sum += R_(i, m) * V_(m, j);
    M_(i, j) = sum;
  }
}

void HessenbergStep::MultiplyRows(int first, int last) {
  for (int from = std::max(1, first - 1); from <= n_; from += kTile) {
    const int to = std::min(from + kTile - 1, n_);
    const int depth = std::min(to + 1, n_) - first + 1;
    SetProduct(Part(R_, first, first, last - first + 1, depth),
               Part(std::as_const(V_), first, from, depth, to - from + 1),
               Part(M_, first, from, last - first + 1, to - from + 1));
  }
}

}  // namespace

void StepHessenbergQr(Matrix& M, int n, HessenbergQr& work) {
  HessenbergStep step(M, n, work);
  if (n <= HessenbergQr::kSmallOrder) {
    step.RunColumnByColumn();
  } else {
    step.RunInBlocks();
  }
}

}  // namespace qmx
