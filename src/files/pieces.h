// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace qmx {

/// How many numbers of a file are written or read between two reports: a few milliseconds. Fewer
/// are not shared among cores.
inline constexpr std::size_t kBetweenReports = 16384;

/// How many pieces so many numbers are shared in.
inline constexpr std::size_t kPieces = 16;

}  // namespace qmx
