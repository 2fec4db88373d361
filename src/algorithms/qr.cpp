#include "algorithms/qr.h"

#include <algorithm>
#include <cfenv>
#include <cmath>
#include <utility>
#include <vector>

#include "algorithms/ordered_product.h"
#include "algorithms/projection.h"

// Once column k of V is final, its projections of all later columns can be taken and subtracted: no
// later column is needed for that. So a block of columns is made final from two halves, and all
// projections on the left half go over the right half at once:
//
//        first..middle  ..last         1. Make the left half final.
//       +-------------+--------+       2. D := VLᵀ·A, the dot products with the columns of A.
//       |     VL      |   VR   |       3. VR := VR - VL·C, where C is D divided by squared norms.
//       +-------------+--------+       4. Make the right half final.
//
// Every dot product grows with the row number and every element takes its projections in the order
// of the columns, as in the textbook loop.

namespace qmx {
namespace {

constexpr int kBlockColumns = 256;

// Up to here the bookkeeping of blocks takes longer than it saves.
constexpr int kFewColumns = 16;

class GramSchmidt {
 public:
  explicit GramSchmidt(const Matrix& A)
      : A_(A),
        V_(A),
        squaredNorm_(A.Cols() + 1),
        factors_{false, Matrix(A.Rows(), A.Cols()), Matrix(A.Cols(), A.Cols())} {}

  QrFactors RunInBlocks(Progress& progress);
  QrFactors RunColumnByColumn(Progress& progress);

 private:
  void ProjectColumn(int j);
  bool FinishBlock(int first, int last);
  bool FinishColumn(int j);
  void Project(int first, int last, int from, int to);
  void SubtractProjections(int first, int last, int from, int to);
  void SubtractFromColumn(int first, int last, int j, const View& C);
  void FillQ(int first, int last);

  const Matrix& A_;
  Matrix V_;  ///< The parts of the columns of A that are orthogonal to the columns before them.
  Matrix coefficients_;        ///< C.
  std::vector<char> hasZero_;  ///< For each column in work whether a dot product is zero.
  std::vector<double> squaredNorm_;
  QrFactors factors_;
};

QrFactors GramSchmidt::RunInBlocks(Progress& progress) {
  const int n = A_.Cols();
  coefficients_ = Matrix(std::min(kBlockColumns, n), n);
  for (int first = 1; first <= n; first += kBlockColumns) {
    const int last = std::min(first + kBlockColumns - 1, n);
    if (!FinishBlock(first, last)) return std::move(factors_);
    Project(first, last, last + 1, n);
    FillQ(first, last);
    progress.Report(static_cast<double>(last) / n);
  }
  factors_.factored = true;
  return std::move(factors_);
}

/// The textbook loop itself: no step is taken for a column before the columns before it are final,
/// so that a failure leaves exactly what was computed up to it.
QrFactors GramSchmidt::RunColumnByColumn(Progress& progress) {
  const int n = A_.Cols();
  for (int j = 1; j <= n; ++j) {
    ProjectColumn(j);
    if (!FinishColumn(j)) return std::move(factors_);
    FillQ(j, j);
  }
  progress.Report(1);
  factors_.factored = true;
  return std::move(factors_);
}

void GramSchmidt::ProjectColumn(int j) {
  const std::ptrdiff_t n = V_.Cols();
  const std::ptrdiff_t end = V_.Rows() * n;
  const double* const a = A_.Data() + j - 1;
  double* const v = V_.Data() + j - 1;
  for (int k = 1; k < j; ++k) {
    const double* const earlier = V_.Data() + k - 1;
    double d = 0.0;
    for (std::ptrdiff_t r = 0; r != end; r += n) d += earlier[r] * a[r];
    factors_.R(k, j) = d / factors_.R(k, k);
    if (d == 0) continue;
    const double c = d / squaredNorm_[k];
    for (std::ptrdiff_t r = 0; r != end; r += n) v[r] -= c * earlier[r];
  }
}

bool GramSchmidt::FinishBlock(int first, int last) {
  if (first == last) return FinishColumn(first);
  const int middle = (first + last) / 2;
  if (!FinishBlock(first, middle)) return false;
  Project(first, middle, middle + 1, last);
  return FinishBlock(middle + 1, last);
}

/// The norm of column j, which nothing is to be subtracted from any more. False where it is zero.
bool GramSchmidt::FinishColumn(int j) {
  double sum = 0.0;
  for (int r = 1; r <= V_.Rows(); ++r) sum += V_(r, j) * V_(r, j);
  squaredNorm_[j] = sum;
  if (sum == 0) return false;
  factors_.R(j, j) = std::sqrt(sum);
  return true;
}

/// Projects the columns from..to of A on the final columns first..last.
void GramSchmidt::Project(int first, int last, int from, int to) {
  if (from > to) return;
  const int steps = last - first + 1;
  const int cols = to - from + 1;
  AddProduct(Part(std::as_const(V_), 1, first, V_.Rows(), steps).Transposed(),
             Part(A_, 1, from, A_.Rows(), cols), Part(factors_.R, first, from, steps, cols));
  SubtractProjections(first, last, from, to);
  for (int k = first; k <= last; ++k) DivideBy(factors_.R(k, k), &factors_.R(k, from), cols);
}

/// V(r,j) = V(r,j) - (d / squaredNorm(k))·V(r,k) with the dot products d that stand in R. Where a
/// dot product is exactly zero the column is left as it is, which a subtraction of zeros would not
/// always do: -0 could become 0.
void GramSchmidt::SubtractProjections(int first, int last, int from, int to) {
  const int steps = last - first + 1;
  const int cols = to - from + 1;
  const View D = Part(factors_.R, first, from, steps, cols);
  const View C = Part(coefficients_, 1, 1, steps, cols);
  hasZero_.resize(cols);
  ProjectionCoefficients(D, &squaredNorm_[first], C, hasZero_);
  for (int j = 0; j < cols;) {
    if (hasZero_[j]) {
      SubtractFromColumn(first, last, from + j, {&C(0, j), steps, 1, C.rowStride, 1});
      ++j;
      continue;
    }
    const int end =
        static_cast<int>(std::find(hasZero_.begin() + j, hasZero_.end(), 1) - hasZero_.begin());
    SubtractProduct(Part(V_, 1, first, V_.Rows(), steps),
                    {&C(0, j), steps, end - j, C.rowStride, 1},
                    Part(V_, 1, from + j, V_.Rows(), end - j));
    j = end;
  }
}

void GramSchmidt::SubtractFromColumn(int first, int last, int j, const View& C) {
  for (int r = 1; r <= V_.Rows(); ++r) {
    for (int k = first; k <= last; ++k) {
      if (factors_.R(k, j) != 0) V_(r, j) -= C(k - first, 0) * V_(r, k);
    }
  }
}

void GramSchmidt::FillQ(int first, int last) {
  for (int r = 1; r <= V_.Rows(); ++r) {
    for (int j = first; j <= last; ++j) factors_.Q(r, j) = V_(r, j) / factors_.R(j, j);
  }
}

}  // namespace

QrFactors FactorQr(const Matrix& A, Progress& progress) {
  if (A.Cols() <= kFewColumns) return GramSchmidt(A).RunColumnByColumn(progress);
  std::fexcept_t faults;
  std::fegetexceptflag(&faults, FE_ALL_EXCEPT);
  QrFactors factors = GramSchmidt(A).RunInBlocks(progress);
  if (factors.factored) return factors;
  // The blocks ran ahead of the column that failed. Neither what they left in R nor a fault of
  // theirs belongs to the result.
  std::fesetexceptflag(&faults, FE_ALL_EXCEPT);
  Progress unheard;
  return GramSchmidt(A).RunColumnByColumn(unheard);
}

}  // namespace qmx
