// SPDX-License-Identifier: MIT
#pragma once

namespace qmx {

/// From now on the calling thread computes only with what all others leave of the processors. Does
/// nothing where the system refuses.
void TakeLowestPriority();

}  // namespace qmx
