// SPDX-License-Identifier: MIT
#pragma once

namespace qmx {

/// The ways of solving a system, which are also the kinds of system that files know and the indices
/// of the options.
enum SystemKind : int { kSystemOneShot, kSystemByFactors, kSystemOverdetermined };
inline constexpr int kSystemKinds = 3;

}  // namespace qmx
