// SPDX-License-Identifier: MIT
#pragma once

#include "proof/proof.h"
#include "workspace/computation.h"

namespace qmx {

/// True if there is something to prove about a result: not for the order of the rows, of which
/// nothing is rounded, nor for a verdict in words that nobody knows.
bool IsQuestioned(Result result, const Computation& computation);

/// What is to be proved about a result of the Workspace, whose operands must be what they were when
/// it was computed. Matrices share their elements. `computation` is the result's own, which must be
/// questioned; A's tells what A is a multiple or a shift of. Eigenvectors are asked about together
/// with the eigenvalues that they belong to.
ProofQuestion DigitQuestion(const Workspace& workspace, Result result,
                            const Computation& computation);

/// True if A is what a multiplication or a shift by a number made of it.
bool IsChangedByNumber(const Workspace& workspace);

}  // namespace qmx
