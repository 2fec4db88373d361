#pragma once

namespace qmx {

// The kinds of a system are the indices of the ways of solving it.
inline constexpr int kSystemOneShot = 0;
inline constexpr int kSystemByFactors = 1;
inline constexpr int kSystemOverdetermined = 2;
inline constexpr int kSystemKinds = 3;

}  // namespace qmx
