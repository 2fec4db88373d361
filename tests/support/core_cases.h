// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "base/matrix.h"

namespace qmx::testing {

/// A small generator of our own (SplitMix64), so that every machine tests the same matrices.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : state_(seed) {}
  std::uint64_t Next();
  /// A whole number in low..high.
  int Integer(int low, int high);
  /// A real number in [low, high).
  double Real(double low, double high);
  bool Chance(double probability) { return Real(0, 1) < probability; }

 private:
  std::uint64_t state_;
};

/// The shape of the matrices that a source deals out.
enum class CaseShape {
  kSquare,
  kAny,        ///< Any shape, square ones included; sometimes without rows or without columns.
  kTall,       ///< At least as many rows as columns.
  kSymmetric,  ///< Square and symmetric.
};

/// Deals out matrices of every kind that the algorithms treat differently: whole numbers full of
/// pivot ties, random reals, Hilbert matrices, singular ones, zero rows and columns, permutations,
/// triangular and banded ones, definite and indefinite symmetric ones, magnitudes up to 1e300 and
/// down to the subnormal numbers, negative zeros. The same seed deals the same matrices.
class CaseSource {
 public:
  CaseSource(std::uint64_t seed, CaseShape shape, int largest)
      : dice_(seed), shape_(shape), largest_(largest) {}

  /// The next matrix; neither side is longer than `largest`. Every kind comes up in turn.
  Matrix Next();
  /// A matrix of the next kind with just this shape (kSymmetric and kSquare: rows = cols).
  Matrix Next(int rows, int cols);
  Dice& Randomness() { return dice_; }

 private:
  Dice dice_;
  CaseShape shape_;
  int largest_;
  int dealt_ = 0;
};

/// The largest magnitudes kept moderate: whole numbers in -size..size.
Matrix IntegerMatrix(Dice& dice, int rows, int cols, int size);
/// Real numbers in [-1, 1).
Matrix RealMatrix(Dice& dice, int rows, int cols);
Matrix HilbertMatrix(int rows, int cols);
Matrix IdentityMatrix(int n);
/// A classic test of eigenvalue routines: two equal eigenvalues, two nearly equal ones, and zero.
Matrix RosserMatrix();

}  // namespace qmx::testing
