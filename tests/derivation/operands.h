// SPDX-License-Identifier: MIT
#pragma once

#include <initializer_list>

#include "base/matrix.h"
#include "proof/rational.h"
#include "support/core_cases.h"

namespace qmx::testing {

Matrix MatrixOf(std::initializer_list<std::initializer_list<double>> rows);

/// Deals out operands that a student might type and some that nobody would: whole numbers and
/// short decimals, singular matrices, zero pivots, and elements such as 1e300, 1e-300, -0 and 0.1.
class OperandSource {
 public:
  explicit OperandSource(std::uint64_t seed, int largest = 8) : dice_(seed), largest_(largest) {}

  Matrix Square();
  Matrix Symmetric();
  Matrix Any(int rows, int cols);
  Dice& Randomness() { return dice_; }
  int Order() { return dice_.Integer(1, largest_); }

 private:
  Dice dice_;
  int largest_;
};

/// The determinant by elimination in exact numbers, without an order of pivots that anybody gave.
Rational DeterminantOf(RationalMatrix A);
/// The solution of A·X = B for a regular A, exactly.
RationalMatrix SolutionOf(RationalMatrix A, RationalMatrix B);
RationalMatrix UnitMatrix(int n);
/// The product, exactly.
RationalMatrix ProductOf(const RationalMatrix& A, const RationalMatrix& B);
RationalMatrix TransposeOf(const RationalMatrix& A);

}  // namespace qmx::testing
