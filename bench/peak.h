// SPDX-License-Identifier: MIT
#pragma once

namespace qmx::bench {

/// What this processor reaches, in operations per second on one thread, with nothing but separate
/// multiplications and additions on its widest vectors, half of each and none waiting for another.
double MeasurePeak();

}  // namespace qmx::bench
