// SPDX-License-Identifier: MIT
#pragma once

namespace qmx::bench {

/// Prints for each size of blocks how many times longer its task takes with the half and with the
/// double of it than with the size that the program works with. The three take turns, and the
/// shortest time of each counts.
void PrintSizes();

}  // namespace qmx::bench
