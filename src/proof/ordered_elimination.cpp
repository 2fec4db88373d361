// SPDX-License-Identifier: MIT
#include "proof/ordered_elimination.h"

namespace qmx {
namespace {

constexpr slong kProductBits = 64;

}  // namespace

OrderedElimination::OrderedElimination(const BallMatrix& A, const WholeScale* scale, slong bits,
                                       const Watch& watch)
    : A_(A),
      scale_(scale),
      bits_(bits),
      watch_(watch),
      known_(std::min(A.Rows(), A.Cols())),
      firstZeroPivot_(known_),
      L_(A.Rows(), known_),
      columns_(A.Cols(), A.Rows()),
      products_(1, Ball(1.0)),
      exponents_(1, 0) {
  for (int j = 0; j < A.Cols(); ++j) {
    ReduceColumn(j);
    if (j >= known_) continue;
    const Pivot pivot = JudgePivot(j);
    if (pivot == Pivot::kNone || pivot == Pivot::kUnclear) {
      known_ = j;
      hasNoFactors_ = pivot == Pivot::kNone;
      continue;
    }
    const bool isSkipped = pivot == Pivot::kColumnIsZero;
    if (isSkipped) {
      firstZeroPivot_ = std::min(firstZeroPivot_, j);
    } else {
      Divide(j);
    }
    Ball product = products_.back();
    if (!isSkipped) arb_mul(product, product, columns_(j, j), kProductBits);
    products_.push_back(std::move(product));
    const slong own = isSkipped || scale_ == nullptr ? 0 : scale_->rows[j] + scale_->cols[j];
    exponents_.push_back(exponents_.back() + own);
  }
}

bool OrderedElimination::IsZeroMinor(arb_srcptr number, int pivots, int row, int column) const {
  if (arb_is_zero(number)) return true;
  if (scale_ == nullptr || !arb_contains_zero(number)) return false;
  return IsZeroQuotient(number, products_[pivots],
                        exponents_[pivots] + scale_->rows[row] + scale_->cols[column]);
}

bool OrderedElimination::IsZeroInColumn(arb_srcptr number, int pivots, int column) const {
  if (arb_is_zero(number)) return true;
  if (scale_ == nullptr || !arb_contains_zero(number)) return false;
  return IsZeroQuotient(number, products_[pivots], exponents_[pivots] + scale_->cols[column]);
}

/// The elements of U in a column; for a column that may have a pivot, also what is left below it,
/// in the places of the multipliers.
void OrderedElimination::ReduceColumn(int column) {
  const bool hasPivot = column < known_;
  const int rows = hasPivot ? A_.Rows() : std::min(known_ + 1, A_.Rows());
  for (int i = 0; i < rows; ++i) {
    watch_.Look();
    const bool isBelow = i > column;
    arb_ptr entry = isBelow ? L_(i, column) : columns_(column, i);
    const int pivots = isBelow ? column : i;
    arb_dot(entry, A_(i, column), 1, L_.Row(i), 1, columns_.Row(column), 1, pivots, bits_);
    if (IsZeroMinor(entry, pivots, i, column)) arb_zero(entry);
  }
}

OrderedElimination::Pivot OrderedElimination::JudgePivot(int column) const {
  arb_srcptr pivot = columns_(column, column);
  if (!arb_contains_zero(pivot)) return Pivot::kFound;
  bool allAreZero = true;
  bool oneIsNot = false;
  for (int i = column + 1; i < A_.Rows(); ++i) {
    allAreZero = allAreZero && arb_is_zero(L_(i, column));
    oneIsNot = oneIsNot || !arb_contains_zero(L_(i, column));
  }
  if (!arb_is_zero(pivot)) return Pivot::kUnclear;
  if (oneIsNot) return Pivot::kNone;
  return allAreZero ? Pivot::kColumnIsZero : Pivot::kUnclear;
}

void OrderedElimination::Divide(int column) {
  Ball inverse;
  arb_inv(inverse, columns_(column, column), bits_);
  for (int i = column + 1; i < A_.Rows(); ++i)
    arb_mul(L_(i, column), L_(i, column), inverse, bits_);
}

}  // namespace qmx
