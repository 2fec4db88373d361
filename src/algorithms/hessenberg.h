#pragma once

#include <algorithm>
#include <vector>

#include "algorithms/projection.h"
#include "base/matrix.h"

namespace qmx {

/// Reduces a square M to upper Hessenberg form by Householder reflections, M := H·M·H for each
/// column that is not yet zero below its subdiagonal (Golub & Van Loan, Matrix Computations, 7.4.2,
/// with explicit reflectors). The square root in a reflector always has the plus sign, so
/// cancellation may happen where the subdiagonal element is negative. Faults: arithmetic faults of
/// any reflection.
void ReduceToHessenberg(Matrix& M);

/// What one QR step works with; the contents mean nothing between steps, but what lies below the
/// subdiagonal of V stays 0.
struct HessenbergQr {
  /// Up to here blocks take longer than they save.
  static constexpr int kSmallOrder = 15;
  /// At most so many columns are projected at a time.
  static constexpr int kStrip = 256;

  explicit HessenbergQr(int order) : V(order, order), norms(2 * (order + 1)) {
    if (order > kSmallOrder) C = Matrix(LargestHalf(order), std::min(LargestHalf(order), kStrip));
  }
  Matrix V;                   ///< Orthogonal columns, in the end divided by their norms.
  Matrix C;                   ///< Projections divided by squared norms, a strip of them.
  std::vector<double> norms;  ///< Of the columns, squared and as they are.
};

/// One QR step on the leading n x n block of a Hessenberg matrix M: factors it by classical
/// Gram-Schmidt and overwrites it by R·Q. A column that vanishes gives a zero column of Q and does
/// not fail. Left of the subdiagonal M has to be zero and stays so.
void StepHessenbergQr(Matrix& M, int n, HessenbergQr& work);

}  // namespace qmx
