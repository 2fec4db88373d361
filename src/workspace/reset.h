#pragma once

#include "workspace/context.h"

namespace qmx {

// Each erases one result: counts, captions, array, window, frame, flags. Erasing what is not there
// does nothing.

void ResetSum(Context& context);
void ResetDifference(Context& context);
void ResetProduct(Context& context);
void ResetDeterminant(Context& context);
void ResetTrace(Context& context);
void ResetInverse(Context& context);
void ResetAdjoint(Context& context);
/// L, U, Permutation and Exchanges. The stored factors outlive this once they are valid.
void ResetLU(Context& context);
void ResetQR(Context& context);
void ResetDefiniteness(Context& context);
void ResetSymmetry(Context& context);
void ResetEigen(Context& context);
void ResetTranspose(Context& context);
/// The System and its Solution; its controls go back to creating.
void ResetSystem(Context& context);

/// All results of A, in their fixed order.
void ResetResultsOfA(Context& context);
/// The results that B takes part in.
void ResetResultsOfB(Context& context);

}  // namespace qmx
