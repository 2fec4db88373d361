// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

namespace qmx::test {

/// False where a sanitizer takes memory that is not the program's.
#if defined(QMX_SANITIZED)
inline constexpr bool kMemoryIsItsOwn = false;
#else
inline constexpr bool kMemoryIsItsOwn = true;
#endif

/// The bytes of a file, and no memory beside them.
std::string WholeFile(const std::string& name);

/// The most memory, in kilobytes, that work takes; -1 where it fails. A system that can copy a
/// process lets it work in a copy, whose own record it keeps; another one is asked again and again
/// meanwhile.
long MemoryOf(const std::function<bool()>& work);

}  // namespace qmx::test
