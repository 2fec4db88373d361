// SPDX-License-Identifier: MIT
#pragma once

#include "workspace/context.h"

namespace qmx {

// One routine per task button. The dispatcher has checked the operands. Each reads A (and B) and
// the fields it needs, computes, and publishes its result; a refusal of the algorithm is told in a
// box and leaves the rest as it was.

void RunSum(Context& context);
void RunDifference(Context& context);
void RunProduct(Context& context);
void RunDeterminant(Context& context);
void RunTrace(Context& context);
void RunInverse(Context& context);
void RunAdjointByCofactors(Context& context);
void RunAdjointByInverse(Context& context);
void RunLU(Context& context);
void RunQR(Context& context);
void RunDefiniteness(Context& context);
void RunEigen(Context& context);
void RunTranspose(Context& context);
void RunScale(Context& context);
void RunShift(Context& context);
void RunSpecialMatrix(Context& context);
void RunSymmetry(Context& context);

}  // namespace qmx
