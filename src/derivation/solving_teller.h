// SPDX-License-Identifier: MIT
#pragma once

#include "derivation/plain_systems.h"
#include "derivation/scribe.h"

namespace qmx {

/// Solves an augmented system M of n rows, the right-hand side in its last column, and tells it:
/// elimination, then back substitution.
void TellSolution(Scribe& scribe, Elements<Traced>& M);

/// Solves the upper triangle of M and tells it; `right` are the right-hand sides (n x 1), `check`
/// those that a row without a pivot is compared with.
void TellBackSubstitution(Scribe& scribe, Elements<Traced> M, const Elements<Traced>& right,
                          const Elements<Traced>& check);

/// p · x(i) = right − m(j) · x(j) ... = rest, with the unknowns put in.
Line EquationWithKnown(const Elements<Traced>& M, const Elements<Traced>& x, int row, int first,
                       int last, const Traced& right);

}  // namespace qmx
