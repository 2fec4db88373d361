#pragma once

#include <vector>

#include "base/matrix.h"

namespace qmx {

/// Reduces a square M to upper Hessenberg form by Householder reflections, M := H·M·H for each
/// column that is not yet zero below its subdiagonal (Golub & Van Loan, Matrix Computations, 7.4.2,
/// with explicit reflectors). The square root in a reflector always has the plus sign, so
/// cancellation may happen where the subdiagonal element is negative. Faults: arithmetic faults of
/// any reflection.
void ReduceToHessenberg(Matrix& M);

/// What one QR step works with; the contents mean nothing between steps.
struct HessenbergQr {
  /// Up to here the textbook loop itself is the quicker way, and blocks are not needed.
  static constexpr int kSmallOrder = 22;

  explicit HessenbergQr(int order) : V(order, order), R(order, order), squaredNorm(order + 1) {
    if (order <= kSmallOrder) return;
    C = Matrix((order + 1) / 2, (order + 1) / 2);
    hasZero.resize(order + 1);
  }
  Matrix V;  ///< Orthogonal columns, in the end divided by their norms.
  Matrix R;  ///< Upper triangular.
  Matrix C;  ///< Projections divided by squared norms.
  std::vector<double> squaredNorm;
  std::vector<char> hasZero;  ///< For each column in work whether a projection is zero.
};

/// One QR step on the leading n x n block of a Hessenberg matrix M: factors it by classical
/// Gram-Schmidt and overwrites it by R·Q. A column that vanishes gives a zero column of Q and does
/// not fail. Entries left of the subdiagonal are not touched.
void StepHessenbergQr(Matrix& M, int n, HessenbergQr& work);

}  // namespace qmx
