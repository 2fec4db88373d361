// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>

#include "proof/pivoted_elimination.h"

namespace qmx {

/// Eliminations of one square matrix with more and more bits.
class EliminationPasses {
 public:
  /// A and scale are kept by reference. `isSingular` tells it for certain; it is asked where an
  /// elimination finds no pivot that is proved to differ from zero.
  EliminationPasses(const BallMatrix& A, const WholeScale& scale, std::function<bool()> isSingular,
                    const Watch& watch);

  /// The next one, of a matrix thereby proved to be regular; null where it is singular. Throws what
  /// the watch throws.
  std::unique_ptr<PivotedElimination> Next();

 private:
  const BallMatrix& A_;
  const WholeScale& scale_;
  std::function<bool()> isSingular_;
  const Watch& watch_;
  slong bits_;
  bool isRegular_ = false;
};

/// The largest order whose inverse is taken from an elimination in balls from the start.
inline constexpr int kLargestDirectInverse = 64;

/// Memory for so many matrices of balls of n x n.
double BytesOfBalls(double matrices, double n, double bits);

/// Tells for certain whether a square A is singular.
std::function<bool()> RankTest(const Matrix& A, const Watch& watch);

/// The power of ten nearest to the condition number of A in the 1-norm; row k of `inverse` is
/// column k of the inverse.
int ConditionExponent(const BallMatrix& A, const BallMatrix& inverse);
int ConditionExponent(const BallMatrix& A, const WholeScale& scale, const Watch& watch);

}  // namespace qmx
