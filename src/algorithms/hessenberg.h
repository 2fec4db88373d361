// SPDX-License-Identifier: MIT
#pragma once

#include "algorithms/block_sizes.h"
#include "algorithms/ordered_product.h"
#include "algorithms/shared_work.h"
#include "algorithms/work_meter.h"
#include "base/matrix.h"
#include "base/vector.h"

namespace qmx {

/// Reduces a square M to upper Hessenberg form by Householder reflections, M := H·M·H for each
/// column that is not yet zero below its subdiagonal (Golub & Van Loan, Matrix Computations, 7.4.2,
/// with explicit reflectors). The square root in a reflector always has the plus sign, so
/// cancellation may happen where the subdiagonal element is negative. Faults: arithmetic faults of
/// any reflection.
void ReduceToHessenberg(Matrix& M, WorkMeter& meter,
                        const HessenbergSizes& sizes = kBlockSizes.hessenberg);

/// What the reduction of a matrix of order n adds to the meter.
inline double ReductionWork(double n) { return n * n * n * n * 7 / 12; }

/// What QR steps on matrices of up to some order work with; the contents mean nothing between
/// steps, but what lies below the subdiagonal of V stays 0.
struct HessenbergQr {
  explicit HessenbergQr(int order, const HessenbergSizes& blockSizes = kBlockSizes.hessenberg);

  /// Whether the members of the team share a step on a block of this order.
  bool Shares(int order) const { return rooms.IsShared() && order >= sizes.shareCycleFrom; }
  /// The running member's steps x cols part of the coefficients, rows of which lie together.
  View Coefficients(int steps, int cols);
  /// For R, in rows of a tile each.
  Vector<double>& RoomForR();

  HessenbergSizes sizes;
  Matrix V;                    ///< Orthogonal columns, in the end divided by their norms.
  Vector<double> squaredNorm;  ///< Of the columns.
  Vector<double> norm;
  /// A strip of projections divided by squared norms, later a strip of rows of R, `tile` of them at
  /// most; nothing up to the small order.
  PerMember<Vector<double>> rooms;
  Vector<double> roomForR;  ///< Where members share steps.
};

/// One QR step on the leading n x n block of a Hessenberg matrix M: factors it by classical
/// Gram-Schmidt and overwrites it by R·Q. A column that vanishes gives a zero column of Q and does
/// not fail. Left of the subdiagonal M has to be zero and stays so.
void StepHessenbergQr(Matrix& M, int n, HessenbergQr& work, WorkMeter& meter);

/// What a step on a block of order n adds to the meter.
inline double HessenbergStepWork(double n) { return n * n / 2 * (n + kStepDownColumn); }

}  // namespace qmx
