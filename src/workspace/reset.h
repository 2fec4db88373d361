// SPDX-License-Identifier: MIT
#pragma once

#include "workspace/context.h"
#include "workspace/result_table.h"

namespace qmx {

/// Erases a result and what goes with it: counts, captions, arrays, windows, frames, flags. Erasing
/// what is not there does nothing. With LU go Permutation and Exchanges, but stored factors outlive
/// it once they are valid; with the eigenvalues the eigenvectors; with the System its Solution, and
/// its controls go back to creating. A and B are not erased here.
void Reset(Context& context, Result result);

/// All results of A, in their fixed order.
void ResetResultsOfA(Context& context);
/// The results that B takes part in.
void ResetResultsOfB(Context& context);

/// Erases a slot's matrix and closes its window; fields keep their text.
void EraseSlot(Context& context, Slot slot);

}  // namespace qmx
