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
//       +-------------+            The dot products take the zeros below the trapezium along; to a
//       |             |            sum that started at 0 they make no difference. The subtractions
//       |             |            do not take them along, since -0 could become 0.
//       +  .          | first + 1
//          +  .       |
//             +-------+ last + 1
//
// Every sum and every element takes its steps in the order of the textbook loop.

namespace qmx {
namespace {

// So many columns of a block are projected one by one, where the columns are short and where they
// are long: below, the bookkeeping of blocks takes longer than it saves.
constexpr int kShortOrder = 64;
constexpr int kNarrowShort = 12;
constexpr int kNarrowLong = 2;

constexpr int kStripRows = 16;

// Rows and columns of the blocks of R·Q.
constexpr int kProductBlock = 64;

class HessenbergStep {
 public:
  HessenbergStep(Matrix& M, int n, HessenbergQr& work)
      : M_(M),
        V_(work.V),
        R_(work.R),
        coefficients_(work.C),
        n_(n),
        narrow_(n <= kShortOrder ? kNarrowShort : kNarrowLong),
        squaredNorm_(work.squaredNorm),
        hasZero_(work.hasZero) {}

  void RunInBlocks();
  void RunColumnByColumn();

 private:
  int Length(int j) const { return std::min(j + 1, n_); }

  void FinishColumns(int first, int last);
  void FinishColumn(int j);
  void Project(int first, int last, int from, int to);
  void ProjectColumn(int first, int last, int j);
  void Subtract(int first, int last, int from, const View& C);
  void SubtractSteps(int top, int bottom, int k, int end, int from, int first, const View& C);
  void FillQ();
  void MultiplyFactors();
  void MultiplyRow(int i);
  void MultiplyRows(int first, int last);

  Matrix& M_;
  Matrix& V_;
  Matrix& R_;
  Matrix& coefficients_;
  const int n_;
  const int narrow_;
  std::vector<double>& squaredNorm_;
  std::vector<char>& hasZero_;
};

void HessenbergStep::RunInBlocks() {
  for (int i = 1; i <= n_; ++i) {
    const int from = std::max(1, i - 1);
    std::copy(M_.Row(i) + (from - 1), M_.Row(i) + n_, V_.Row(i) + (from - 1));
    std::fill(R_.Row(i) + (i - 1), R_.Row(i) + n_, 0.0);
  }
  FinishColumns(1, n_);
  FillQ();
  MultiplyFactors();
}

/// The textbook loop itself.
void HessenbergStep::RunColumnByColumn() {
  for (int j = 1; j <= n_; ++j) {
    const int length = Length(j);
    for (int i = 1; i <= length; ++i) V_(i, j) = M_(i, j);
    ProjectColumn(1, j - 1, j);
    FinishColumn(j);
  }
  FillQ();
  for (int i = 1; i <= n_; ++i) MultiplyRow(i);
}

void HessenbergStep::FinishColumns(int first, int last) {
  if (last - first < narrow_) {
    for (int j = first; j <= last; ++j) {
      ProjectColumn(first, j - 1, j);
      FinishColumn(j);
    }
    return;
  }
  const int middle = (first + last) / 2;
  FinishColumns(first, middle);
  Project(first, middle, middle + 1, last);
  FinishColumns(middle + 1, last);
}

/// The norm of column j, which nothing is to be subtracted from any more.
void HessenbergStep::FinishColumn(int j) {
  double sum = 0.0;
  for (int i = 1; i <= Length(j); ++i) sum += V_(i, j) * V_(i, j);
  squaredNorm_[j] = sum;
  R_(j, j) = std::sqrt(sum);
}

/// Projects the columns from..to of M on the final columns first..last; a projection of exactly
/// zero and one on a column that vanished leave a column alone.
void HessenbergStep::Project(int first, int last, int from, int to) {
  const int steps = last - first + 1;
  const int cols = to - from + 1;
  const auto norms = squaredNorm_.begin();
  if (std::find(norms + first, norms + last + 1, 0.0) != norms + last + 1) {
    for (int j = from; j <= to; ++j) ProjectColumn(first, last, j);
    return;
  }
  const View D = Part(R_, first, from, steps, cols);
  AddProduct(ConstView(Part(V_, 1, first, last + 1, steps)).Transposed(),
             Part(M_, 1, from, last + 1, cols), D);
  const View C = Part(coefficients_, 1, 1, steps, cols);
  ProjectionCoefficients(D, &squaredNorm_[first], C, hasZero_);
  for (int j = 0; j < cols;) {
    if (hasZero_[j]) {
      ProjectColumn(first, last, from + j);
      ++j;
      continue;
    }
    const int end = static_cast<int>(std::find(hasZero_.begin() + j, hasZero_.begin() + cols, 1) -
                                     hasZero_.begin());
    Subtract(first, last, from + j, {&C(0, j), steps, end - j, C.rowStride, 1});
    for (int k = 0; k < steps; ++k) DivideBy(R_(first + k, first + k), &D(k, j), end - j);
    j = end;
  }
}

/// The textbook loop itself, for one column.
void HessenbergStep::ProjectColumn(int first, int last, int j) {
  const std::ptrdiff_t n = V_.Cols();
  const double* const m = M_.Data() + j - 1;
  double* const v = V_.Data() + j - 1;
  for (int p = first; p <= last; ++p) {
    const double* const earlier = V_.Data() + p - 1;
    const std::ptrdiff_t end = (p + 1) * n;
    double d = 0.0;
    for (std::ptrdiff_t i = 0; i != end; i += n) d += earlier[i] * m[i];
    const double a = squaredNorm_[p];
    R_(p, j) = a == 0 ? 0.0 : d / R_(p, p);
    if (a == 0 || d == 0) continue;
    const double c = d / a;
    for (std::ptrdiff_t i = 0; i != end; i += n) v[i] -= c * earlier[i];
  }
}

/// V(i,j) = V(i,j) - C(k,j)·V(i,k) for the columns of C, which begin with column `from` of V.
void HessenbergStep::Subtract(int first, int last, int from, const View& C) {
  const int cols = C.cols;
  SubtractProduct(Part(V_, 1, first, first + 1, C.rows), C, Part(V_, 1, from, first + 1, cols));
  // The trapezium, in strips of rows: first what each row has for itself, then what all have.
  for (int top = first + 2; top <= last + 1; top += kStripRows) {
    const int bottom = std::min(top + kStripRows - 1, last + 1);
    for (int i = top; i <= bottom; ++i) SubtractSteps(i, i, i - 1, bottom - 2, from, first, C);
    SubtractSteps(top, bottom, bottom - 1, last, from, first, C);
  }
}

/// The steps k..end in the rows top..bottom; row 0 of C belongs to step `first`.
void HessenbergStep::SubtractSteps(int top, int bottom, int k, int end, int from, int first,
                                   const View& C) {
  const int steps = end - k + 1;
  if (steps <= 0) return;
  const int rows = bottom - top + 1;
  SubtractProduct(Part(V_, top, k, rows, steps), {&C(k - first, 0), steps, C.cols, C.rowStride, 1},
                  Part(V_, top, from, rows, C.cols));
}

/// Q takes the place of V.
void HessenbergStep::FillQ() {
  double* const norm = squaredNorm_.data();
  for (int j = 1; j <= n_; ++j) norm[j] = R_(j, j);
  const bool vanishes = std::find(norm + 1, norm + n_ + 1, 0.0) != norm + n_ + 1;
  for (int i = 1; i <= n_; ++i) {
    double* v = V_.Row(i) - 1;
    for (int j = std::max(1, i - 1); j <= n_; ++j) {
      v[j] = vanishes && norm[j] == 0 ? 0.0 : v[j] / norm[j];
    }
  }
}

/// M := R·Q on and right of the subdiagonal.
void HessenbergStep::MultiplyFactors() {
  for (int i = 1; i <= n_; ++i) {
    std::fill(M_.Row(i) + std::max(0, i - 2), M_.Row(i) + n_, 0.0);
  }
  for (int first = 1; first <= n_; first += kProductBlock) {
    MultiplyRows(first, std::min(first + kProductBlock - 1, n_));
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

/// Row i of R begins with column i, row m of Q with column m - 1, row i of M with column i - 1.
/// Zeros in front of these make no difference to a sum that started at 0.
void HessenbergStep::MultiplyRows(int first, int last) {
  const int common = std::max(1, last - 1);  // The first column that all rows have.
  for (int i = first; i <= last; ++i) {
    const int from = std::max(1, i - 1);
    if (from >= common) continue;
    AddProduct(Part(R_, i, i, 1, last - i),
               Part(std::as_const(V_), i, from, last - i, common - from),
               Part(M_, i, from, 1, common - from));
  }
  for (int from = common; from <= n_; from += kProductBlock) {
    const int to = std::min(from + kProductBlock - 1, n_);
    const int depth = std::min(to + 1, n_) - first + 1;
    AddProduct(Part(R_, first, first, last - first + 1, depth),
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
