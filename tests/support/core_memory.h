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

/// The most memory, in kilobytes, that work takes in a process of its own; -1 where it fails.
long MemoryOf(const std::function<bool()>& work);

}  // namespace qmx::test
