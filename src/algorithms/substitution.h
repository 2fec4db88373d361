// SPDX-License-Identifier: MIT
#pragma once

#include <span>

#include "algorithms/work_meter.h"
#include "base/matrix.h"

namespace qmx {

// The two halves of solving a system whose matrix is split into triangles (Golub & Van Loan, Matrix
// Computations, 3.1). Every sum is formed from 0 in increasing order of the unknowns and then
// subtracted. Each half adds kStepOfSum to the meter for each multiplication.

/// The sum over j = first..last of T(i,j)·x(j), from 0.
double RowTimesVector(const Matrix& T, int i, int first, int last, std::span<const double> x);

/// x := L⁻¹·x in the first `rows` unknowns. L has ones on its diagonal, which is not read, nor is
/// what lies behind it.
void SubstituteForward(const Matrix& L, int rows, std::span<double> x, WorkMeter& meter);

/// x := U⁻¹·x from the last unknown to that of row `top`; what lies before the diagonal of U is not
/// read. Ends at an exactly zero diagonal element, whose row it returns; 0 where there is none.
int SubstituteBack(const Matrix& U, int top, std::span<double> x, WorkMeter& meter);

/// What half a solution adds to the meter.
inline double SubstitutionWork(double n) { return kStepOfSum * n * (n - 1) / 2; }

/// The elements of a matrix of one column.
inline std::span<double> Unknowns(Matrix& x) { return {x.Data(), x.Size()}; }

}  // namespace qmx
