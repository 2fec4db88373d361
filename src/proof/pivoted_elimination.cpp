// SPDX-License-Identifier: MIT
#include "proof/pivoted_elimination.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace qmx {
namespace {

// Precision of the products that only have to tell whether a whole number is below 1.
constexpr slong kProductBits = 64;

// A double and what lies between it and the exact number, with room to spare.
constexpr slong kLeastBits = 128;

bool IsOddPermutation(std::vector<int> order) {
  bool isOdd = false;
  for (int k = 0; k < static_cast<int>(order.size()); ++k) {
    while (order[k] != k) {
      std::swap(order[k], order[order[k]]);
      isOdd = !isOdd;
    }
  }
  return isOdd;
}

}  // namespace

slong FirstBits(int n) { return kLeastBits + n + n / 2; }

PivotedElimination::PivotedElimination(const BallMatrix& A, const WholeScale* scale, slong bits,
                                       const Watch& watch, Numbers numbers)
    : A_(A),
      scale_(scale),
      bits_(bits),
      watch_(watch),
      isApproximate_(numbers == Numbers::kApproximate),
      L_(A.Rows(), std::min(A.Rows(), A.Cols())),
      columns_(A.Cols(), std::min(A.Rows(), A.Cols())),
      upper_(0, 0),
      rowOrder_(A.Rows()),
      products_(1, Ball(1.0)),
      exponents_(1, 0) {
  std::iota(rowOrder_.begin(), rowOrder_.end(), 0);
  for (int j = 0; j < A.Cols(); ++j) EliminateColumn(j);
  upper_ = BallMatrix(Rank(), Rank());
  for (int i = 0; i < Rank(); ++i) {
    for (int t = i; t < Rank(); ++t) arb_swap(upper_(i, t), columns_(pivotColumns_[t], i));
  }
}

void PivotedElimination::Dot(arb_ptr result, arb_srcptr initial, arb_srcptr one, arb_srcptr two,
                             int count) const {
  const auto dot = isApproximate_ ? arb_approx_dot : arb_dot;
  dot(result, initial, 1, one, 1, two, 1, count, bits_);
}

void PivotedElimination::Multiply(arb_ptr number, const Ball& factor) const {
  if (isApproximate_) {
    arf_mul(arb_midref(number), arb_midref(number), arb_midref(arb_srcptr(factor)), bits_,
            ARF_RND_DOWN);
  } else {
    arb_mul(number, number, factor, bits_);
  }
}

/// Takes the pivots so far out of an element.
void PivotedElimination::ReduceEntry(int row, int column, arb_ptr entry) {
  const int pivots = std::min(row, Rank());
  Dot(entry, A_(rowOrder_[row], column), L_.Row(row), columns_.Row(column), pivots);
  if (scale_ == nullptr || isApproximate_ || !arb_contains_zero(entry)) return;
  const slong exponent = exponents_[pivots] + scale_->rows[rowOrder_[row]] + scale_->cols[column];
  if (IsZeroQuotient(entry, products_[pivots], exponent)) arb_zero(entry);
}

void PivotedElimination::EliminateColumn(int column) {
  const int rank = Rank();
  for (int i = 0; i < rank; ++i) {
    watch_.Look();
    ReduceEntry(i, column, columns_(column, i));
  }
  if (rank == A_.Rows()) {
    freeColumns_.push_back(column);
    return;
  }
  for (int i = rank; i < A_.Rows(); ++i) {
    watch_.Look();
    ReduceEntry(i, column, L_(i, rank));
  }
  ChoosePivot(column);
}

void PivotedElimination::ChoosePivot(int column) {
  const int rank = Rank();
  int best = -1;
  bool allAreZero = true;
  for (int i = rank; i < A_.Rows(); ++i) {
    arb_srcptr entry = L_(i, rank);
    if (arb_is_zero(entry)) continue;
    allAreZero = false;
    if (isApproximate_ ? arf_is_zero(arb_midref(entry)) : arb_contains_zero(entry)) continue;
    if (best < 0 || arf_cmpabs(arb_midref(entry), arb_midref(L_(best, rank))) > 0) best = i;
  }
  if (best >= 0) return AcceptPivot(column, best);
  freeColumns_.push_back(column);
  freeAreProved_ = freeAreProved_ && allAreZero;
}

void PivotedElimination::AcceptPivot(int column, int row) {
  const int rank = Rank();
  std::swap(rowOrder_[rank], rowOrder_[row]);
  if (row != rank) L_.SwapRows(rank, row);
  arb_ptr pivot = columns_(column, rank);
  arb_swap(pivot, L_(rank, rank));
  Ball inverse;
  arb_inv(inverse, pivot, bits_);
  for (int i = rank + 1; i < A_.Rows(); ++i) {
    Multiply(L_(i, rank), inverse);
  }
  Ball product;
  arb_mul(product, products_.back(), pivot, kProductBits);
  products_.push_back(std::move(product));
  const slong own = scale_ == nullptr ? 0 : scale_->rows[rowOrder_[rank]] + scale_->cols[column];
  exponents_.push_back(exponents_.back() + own);
  pivotColumns_.push_back(column);
}

Ball PivotedElimination::PivotProduct() const {
  Ball product(1.0);
  for (int i = 0; i < Rank(); ++i) arb_mul(product, product, upper_(i, i), bits_);
  return product;
}

Ball PivotedElimination::Determinant() const {
  Ball determinant = PivotProduct();
  if (IsOddPermutation(rowOrder_)) arb_neg(determinant, determinant);
  return determinant;
}

/// Solves U·x = b in place, b being in the order of the pivots.
void PivotedElimination::BackSubstitute(arb_ptr right) const {
  for (int i = Rank() - 1; i >= 0; --i) {
    watch_.Look();
    Dot(right + i, right + i, upper_.Row(i) + i + 1, right + i + 1, Rank() - 1 - i);
    if (arb_is_zero(right + i)) continue;
    if (isApproximate_) {
      arf_div(arb_midref(right + i), arb_midref(right + i), arb_midref(upper_(i, i)), bits_,
              ARF_RND_DOWN);
    } else {
      arb_div(right + i, right + i, upper_(i, i), bits_);
    }
  }
}

BallMatrix PivotedElimination::Solve(const BallMatrix& rightSides) const {
  const int n = Rank();
  BallMatrix solutions(rightSides.Rows(), n);
  for (int k = 0; k < rightSides.Rows(); ++k) {
    arb_ptr x = solutions.Row(k);
    int first = 0;
    while (first < n && arb_is_zero(rightSides(k, rowOrder_[first]))) ++first;
    for (int i = first; i < n; ++i) {
      watch_.Look();
      Dot(x + i, rightSides(k, rowOrder_[i]), L_.Row(i) + first, x + first, i - first);
    }
    BackSubstitute(x);
  }
  return solutions;
}

BallMatrix PivotedElimination::NullVector() const {
  const int free = freeColumns_.front();
  // The column once more, through the pivots as well that were found after it.
  BallMatrix reduced(1, Rank());
  for (int i = 0; i < Rank(); ++i) {
    Dot(reduced(0, i), A_(rowOrder_[i], free), L_.Row(i), reduced.Row(0), i);
  }
  for (int i = 0; i < Rank(); ++i) arb_neg(reduced(0, i), reduced(0, i));
  BackSubstitute(reduced.Row(0));
  BallMatrix vector(1, A_.Cols());
  arb_one(vector(0, free));
  for (int i = 0; i < Rank(); ++i) arb_swap(vector(0, pivotColumns_[i]), reduced(0, i));
  return vector;
}

bool PivotedElimination::IsZeroUnknown(arb_srcptr unknown, int j, slong exponent) const {
  if (scale_ == nullptr) return false;
  return IsZeroQuotient(unknown, products_.back(), exponents_.back() + exponent - scale_->cols[j]);
}

}  // namespace qmx
