// SPDX-License-Identifier: MIT
#pragma once

#include "derivation/derivation.h"
#include "derivation/scribe.h"

// One derivation each; the question fits its task.

namespace qmx {

void DeriveElementwise(const DerivationQuestion& question, Scribe& scribe);  ///< Sum, difference.
void DeriveProduct(const DerivationQuestion& question, Scribe& scribe);
void DeriveTranspose(const DerivationQuestion& question, Scribe& scribe);
void DeriveTrace(const DerivationQuestion& question, Scribe& scribe);
void DeriveSymmetry(const DerivationQuestion& question, Scribe& scribe);
void DeriveDeterminant(const DerivationQuestion& question, Scribe& scribe);
void DeriveInverse(const DerivationQuestion& question, Scribe& scribe);
void DeriveAdjointByInverse(const DerivationQuestion& question, Scribe& scribe);
void DeriveAdjointByCofactors(const DerivationQuestion& question, Scribe& scribe);
void DeriveLu(const DerivationQuestion& question, Scribe& scribe);
void DeriveQr(const DerivationQuestion& question, Scribe& scribe);
void DeriveDefiniteness(const DerivationQuestion& question, Scribe& scribe);
void DeriveEigenvalues(const DerivationQuestion& question, Scribe& scribe);
void DeriveEigenvectors(const DerivationQuestion& question, Scribe& scribe);
void DeriveSolution(const DerivationQuestion& question, Scribe& scribe);
void DeriveSolutionByFactors(const DerivationQuestion& question, Scribe& scribe);
void DeriveLeastSquares(const DerivationQuestion& question, Scribe& scribe);

/// Of a solution by factors: the row of the system whose right-hand side belongs to row `row` of
/// the factors; 0 where the exchanges name none.
int RowOfSystem(const DerivationQuestion& question, int row);
/// adj(A) = the matrix, element (row, col) marked as found; 0, 0 for all of them.
void ShowAdjoint(Scribe& scribe, const Elements<Traced>& adjoint, int row, int col);
/// det(A) = − p(1) · p(2) · ... = value, and why that sign: the diagonal of W after an elimination
/// with so many exchanges. `line` begins the formula.
void TellDiagonalProduct(Scribe& scribe, const Elements<Traced>& W, int exchanges,
                         const Traced& value, Line line);

}  // namespace qmx
