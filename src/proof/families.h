// SPDX-License-Identifier: MIT
#pragma once

#include "proof/proof.h"
#include "proof/watch.h"

namespace qmx {

// One family of results each. The question fits: the shapes belong together, all numbers are
// finite. The answer has its results, of which nothing is known yet, and the outcome
// kCannotBeProved; it is kept up to date, so that it holds what is proved when a limit is reached.
// All throw what the watch throws.

/// Sum, difference, transpose, scalar multiple, shift, trace: exact, whatever the exponents.
void ProveElementary(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer);
void ProveProduct(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer);
void ProveDeterminant(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer);
void ProveInverse(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer);
void ProveAdjoint(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer);
void ProveLu(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer);
void ProveQr(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer);
void ProveEigen(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer);
void ProveSolution(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer);
void ProveSolutionByFactors(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer);
void ProveLeastSquares(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer);
void ProveSymmetry(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer);
void ProveDefiniteness(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer);

}  // namespace qmx
