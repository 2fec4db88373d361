// SPDX-License-Identifier: MIT
#include "algorithms/qr.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "algorithms/elimination_steps.h"
#include "algorithms/ordered_product.h"
#include "algorithms/projection.h"
#include "algorithms/shared_work.h"
#include "algorithms/work_matrix.h"
#include "base/arithmetic.h"
#include "base/vector.h"

// Once column k of V is final, its projections of all later columns can be taken and subtracted: no
// later column is needed for that. So a block of columns is made final from two halves, and all
// projections on the left half go over the right half at once:
//
//        first..middle  ..last         1. Make the left half final.
//       +-------------+--------+       2. D := VLᵀ·A, the dot products with the columns of A.
//       |     VL      |   VR   |       3. VR := VR - VL·C, where C is D divided by squared norms.
//       +-------------+--------+       4. Make the right half final.
//
// Where a team shares the work, the blocks are lanes: one is made final as soon as it has taken the
// projections on all blocks before it, while those behind may still lack some.
//
// Every dot product grows with the row number and every element takes its projections in the order
// of the columns, as in the textbook loop.

namespace qmx {
namespace {

class GramSchmidt {
 public:
  GramSchmidt(const Matrix& A, WorkMeter& meter, const BlockSizes& sizes)
      : n_(A.Cols()),
        meter_(meter),
        sizes_(sizes.qr),
        V_(WorkCopy(A, sizes.work)),
        wideA_(V_.Cols() == n_ ? Matrix() : V_),
        A_(V_.Cols() == n_ ? A : wideA_),
        squaredNorm_(n_) {}

  QrFactors RunInBlocks();
  QrFactors RunColumnByColumn();

 private:
  QrFactors Factors(int columns);

  bool FinishAll();
  bool TryToShare();
  bool FinishAllShared();
  bool FinishBlock(int first, int last, WorkMeter& meter);
  bool FinishColumn(int j, int last, WorkMeter& meter);
  template <int kCount>
  void ProjectNext(int j, int from);
  void ProjectColumn(int j);
  void Project(int first, int last, int from, int to, WorkMeter& meter);
  void SubtractSome(int first, int from, const View& D, const View& C, WorkMeter& meter);

  const int n_;  ///< The columns. The work matrices may have some behind.
  WorkMeter& meter_;
  const QrSizes& sizes_;
  Matrix V_;  ///< The parts of the columns of A that are orthogonal to the columns before them.
  const Matrix wideA_;
  const Matrix& A_;      ///< What was given, or in as many columns as V_.
  Matrix R_;             ///< Its upper triangle; below there is anything until the end.
  Matrix coefficients_;  ///< C, in the columns that are projected.
  Vector<double> squaredNorm_;
};

/// False among the factors where a column vanished; nothing else counts then.
QrFactors GramSchmidt::RunInBlocks() {
  const int n = n_;
  R_ = Matrix::Unset(n, n);
  const int block = std::max(sizes_.block, sizes_.sharedBlock);
  if (n > std::min(sizes_.smallOrder, sizes_.block))
    coefficients_ = Matrix(std::min(block, n), V_.Cols());
  return (n < sizes_.shareFrom ? FinishAll() : TryToShare()) ? Factors(n) : QrFactors();
}

bool GramSchmidt::TryToShare() {
  const Attempt attempt(SharedTeam(), "Gram-Schmidt", 1.0 * V_.Rows() * n_ * n_);
  return attempt.IsShared() ? FinishAllShared() : FinishAll();
}

/// False where a column vanished.
bool GramSchmidt::FinishAll() {
  const int n = n_;
  for (int first = 1; first <= n; first += sizes_.block) {
    const int last = std::min(first + sizes_.block - 1, n);
    if (!FinishBlock(first, last, meter_)) return false;
    Project(first, last, last + 1, n, meter_);
  }
  return true;
}

bool GramSchmidt::FinishAllShared() {
  const std::vector<int> firsts = FirstsOfLanes(n_, sizes_.sharedBlock, sizes_.tile);
  Lanes::Plan plan;
  plan.finished = static_cast<int>(firsts.size()) - 1;
  plan.most = sizes_.sharedStrip;
  bool good = true;
  ShareLanes(
      meter_, firsts, plan,
      [&](int step, int from, int to, WorkMeter& meter) {
        Project(firsts[step], firsts[step + 1] - 1, from, to, meter);
      },
      [&](int lane, WorkMeter& meter) {
        good = FinishBlock(firsts[lane], firsts[lane + 1] - 1, meter);
        return good ? Lanes::Outcome::kGoOn : Lanes::Outcome::kEnd;
      });
  return good;
}

/// The textbook loop itself: no step is taken for a column before the columns before it are final,
/// so that a failure leaves exactly what was computed up to it.
QrFactors GramSchmidt::RunColumnByColumn() {
  const int n = n_;
  R_ = Matrix(n, n);
  for (int j = 1; j <= n; ++j) {
    ProjectColumn(j);
    if (!FinishColumn(j, j, meter_)) return Factors(j - 1);
  }
  return Factors(n);
}

/// Q, which takes the place of V, and R, once so many columns are final.
QrFactors GramSchmidt::Factors(int columns) {
  const int n = n_;
  for (int j = 1; j <= columns; ++j) squaredNorm_(j) = R_(j, j);
  Matrix Q;
  const bool isWide = V_.Cols() != n;
  if (isWide) {
    Q = Matrix::Unset(V_.Rows(), n);
  } else {
    Q.Swap(V_);
  }
  ShareRows(meter_, std::max(Q.Rows(), n), n, [&](int r, WorkMeter& meter) {
    if (r <= n) std::fill_n(R_.Row(r), r - 1, 0.0);
    if (r > Q.Rows()) return;
    double* const row = Q.Row(r);
    if (isWide) std::copy_n(V_.Row(r), columns, row);
    DivideByEach(squaredNorm_.From(1), row, columns);
    std::fill(row + columns, row + n, 0.0);
    meter.Add(kMovedNumber * n);
  });
  return {columns == n, std::move(Q), std::move(R_)};
}

bool GramSchmidt::FinishBlock(int first, int last, WorkMeter& meter) {
  const int columns = last - first + 1;
  if (columns <= kColumnsAtOnce || n_ <= sizes_.smallOrder) {
    for (int j = first; j <= last; ++j) {
      if (!FinishColumn(j, last, meter)) return false;
    }
    return true;
  }
  const int middle = first + LeftHalf(columns, sizes_.tile) - 1;
  if (!FinishBlock(first, middle, meter)) return false;
  Project(first, middle, middle + 1, last, meter);
  return FinishBlock(middle + 1, last, meter);
}

/// Column j, which nothing is to be subtracted from any more: its norm, and the projections of the
/// columns up to `last` on it. False where the norm is zero.
bool GramSchmidt::FinishColumn(int j, int last, WorkMeter& meter) {
  ForColumnsAtOnce(j + 1, last, [&]<int kCount>(int from) { ProjectNext<kCount>(j, from); });
  meter.Add(kStepDownColumn * V_.Rows());
  if (squaredNorm_(j) != 0) return true;
  // The column that failed, and those before it, are done once more.
  meter.Expect(kStepDownColumn * V_.Rows() * j * (j - 1.0));
  return false;
}

/// Projects the kCount columns from column `from` on on column j. The first time that takes the
/// norm of column j as well.
template <int kCount>
void GramSchmidt::ProjectNext(int j, int from) {
  const int stride = V_.Cols();
  const double* const v = V_.Row(1) + (j - 1);
  double square;
  double d[kCount + 1];
  NormAndDots<kCount>(v, A_.Row(1) + (from - 1), stride, V_.Rows(), square, d);
  if (from == j + 1) squaredNorm_(j) = square;
  if (square == 0) return;
  if (from == j + 1) R_(j, j) = std::sqrt(square);
  const double norm = R_(j, j);
  double* const r = R_.Row(j) + (from - 1);
  double c[kCount + 1];
  bool hasZero = false;
  for (int t = 0; t < kCount; ++t) {
    hasZero |= d[t] == 0;
    c[t] = d[t] / square;
    r[t] = d[t] / norm;
  }
  double* const w = V_.Row(1) + (from - 1);
  if (!hasZero) return SubtractMultiples<kCount>(v, w, stride, V_.Rows(), c);
  for (int t = 0; t < kCount; ++t) {
    if (d[t] != 0) SubtractMultiples<1>(v, w + t, stride, V_.Rows(), c + t);
  }
}

/// Projects column j of A on all columns before it.
void GramSchmidt::ProjectColumn(int j) {
  for (int k = 1; k < j; ++k) {
    ProjectNext<1>(k, j);
    meter_.Add(2 * kStepDownColumn * V_.Rows());
  }
}

/// Projects the columns from..to of A on the final columns first..last.
void GramSchmidt::Project(int first, int last, int from, int to, WorkMeter& meter) {
  if (from > to) return;
  const int steps = last - first + 1;
  const int cols = to - from + 1;
  const View D = Part(R_, first, from, steps, cols);
  const View C = Part(coefficients_, 1, from, steps, cols);
  SetProduct(Part(std::as_const(V_), 1, first, V_.Rows(), steps).Transposed(),
             Part(A_, 1, from, A_.Rows(), cols), D, meter);
  bool hasZero = false;
  for (int k = 0; k < steps; ++k) {
    hasZero |= PlaceOf(0, &D(k, 0), cols) != cols;
    std::copy_n(&D(k, 0), cols, &C(k, 0));
    DivideBy(squaredNorm_(first + k), &C(k, 0), cols);
  }
  if (hasZero) {
    SubtractSome(first, from, D, C, meter);
  } else {
    SubtractProduct(Part(V_, 1, first, V_.Rows(), steps), C, Part(V_, 1, from, V_.Rows(), cols),
                    meter);
  }
  for (int k = 0; k < steps; ++k) DivideBy(R_(first + k, first + k), &D(k, 0), cols);
}

/// V(r,j) = V(r,j) - C(k,j)·V(r,k) wherever the dot product D(k,j) is not exactly zero. Where it
/// is, the column is left as it is, which a subtraction of zeros would not always do: -0 could
/// become 0.
void GramSchmidt::SubtractSome(int first, int from, const View& D, const View& C,
                               WorkMeter& meter) {
  std::vector<char> hasZero(D.cols);
  for (int k = 0; k < D.rows; ++k) {
    for (int j = 0; j < D.cols; ++j) hasZero[j] |= D(k, j) == 0;
  }
  for (int j = 0; j < D.cols;) {
    if (hasZero[j]) {
      meter.Expect(kStepDownColumn * V_.Rows() * D.rows);
      for (int k = 0; k < D.rows; ++k) {
        meter.Add(kStepDownColumn * V_.Rows());
        if (D(k, j) == 0) continue;
        SubtractMultiples<1>(&V_(1, first + k), &V_(1, from + j), V_.Cols(), V_.Rows(), &C(k, j));
      }
      ++j;
      continue;
    }
    const int end =
        static_cast<int>(std::find(hasZero.begin() + j, hasZero.end(), 1) - hasZero.begin());
    SubtractProduct(Part(V_, 1, first, V_.Rows(), D.rows), Part(C, 0, j, D.rows, end - j),
                    Part(V_, 1, from + j, V_.Rows(), end - j), meter);
    j = end;
  }
}

}  // namespace

QrFactors FactorQr(const Matrix& A, Progress& progress, const BlockSizes& sizes) {
  const ArithmeticFaults faults;
  const double m = A.Rows();
  const double n = A.Cols();
  WorkMeter meter(progress, m * n * (n + kStepDownColumn + kMovedNumber));
  QrFactors factors = GramSchmidt(A, meter, sizes).RunInBlocks();
  if (factors.factored) {
    meter.End();
    return factors;
  }
  // The projections ran ahead of the column that failed. Neither what they left in R nor a fault of
  // theirs belongs to the result.
  faults.BringBack();
  factors = GramSchmidt(A, meter, sizes).RunColumnByColumn();
  meter.End();
  return factors;
}

}  // namespace qmx
