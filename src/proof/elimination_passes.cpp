// SPDX-License-Identifier: MIT
#include "proof/elimination_passes.h"

#include <algorithm>
#include <cmath>

#include "proof/residues.h"

namespace qmx {
namespace {

constexpr slong kNormBits = 64;

/// The largest sum of magnitudes in a row of the midpoints.
Ball LargestRowSum(const BallMatrix& A) {
  Ball largest;
  Ball magnitude;
  for (int i = 0; i < A.Rows(); ++i) {
    Ball sum;
    for (int j = 0; j < A.Cols(); ++j) {
      arb_abs(magnitude, A(i, j));
      arb_add(sum, sum, magnitude, kNormBits);
    }
    if (arf_cmp(arb_midref(arb_srcptr(sum)), arb_midref(arb_srcptr(largest))) > 0) largest = sum;
  }
  return largest;
}

}  // namespace

EliminationPasses::EliminationPasses(const BallMatrix& A, const WholeScale& scale,
                                     std::function<bool()> isSingular, const Watch& watch)
    : A_(A),
      scale_(scale),
      isSingular_(std::move(isSingular)),
      watch_(watch),
      bits_(FirstBits(A.Rows())) {}

std::unique_ptr<PivotedElimination> EliminationPasses::Next() {
  for (;; bits_ *= 2) {
    watch_.Raise(bits_);
    watch_.Demand(BytesOfBalls(6, A_.Rows(), static_cast<double>(bits_)));
    auto elimination = std::make_unique<PivotedElimination>(A_, &scale_, bits_, watch_);
    if (elimination->IsRegular()) {
      isRegular_ = true;
      bits_ *= 2;
      return elimination;
    }
    if (isRegular_) continue;
    if (elimination->FreeColumnsAreProved() || isSingular_()) return nullptr;
    isRegular_ = true;
  }
}

double BytesOfBalls(double matrices, double n, double bits) {
  return matrices * n * n * (64 + bits / 8);
}

std::function<bool()> RankTest(const Matrix& A, const Watch& watch) {
  return [&A, &watch] { return ExactRank(A, watch) < A.Rows(); };
}

int ConditionExponent(const BallMatrix& A, const BallMatrix& inverse) {
  Ball product;
  arb_mul(product, LargestRowSum(A.Transposed()), LargestRowSum(inverse), kNormBits);
  const double log = LogOfMagnitude(product);
  // A logarithm rounded up to a whole bit is half a bit too large on average.
  return static_cast<int>(std::lround((log - 0.5) * std::log10(2.0)));
}

int ConditionExponent(const BallMatrix& A, const WholeScale& scale, const Watch& watch) {
  const PivotedElimination elimination(A, &scale, FirstBits(0), watch,
                                       PivotedElimination::Numbers::kApproximate);
  if (!elimination.IsRegular()) return 0;
  return ConditionExponent(A, elimination.Solve(IdentityBalls(A.Rows())));
}

}  // namespace qmx
