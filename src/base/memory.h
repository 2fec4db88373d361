// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace qmx {

/// The memory of the machine, or less of it in a test.
class Memory {
 public:
  Memory() = default;
  Memory(const Memory&) = delete;
  Memory& operator=(const Memory&) = delete;
  virtual ~Memory() = default;
  /// Bytes that can still be given to this process without taking any from others.
  virtual std::size_t Available() const;
};

/// The machine's.
const Memory& SystemMemory();

/// From now on memory that is given back, up to 64 MB of it, stays with the process for what needs
/// memory next: without that a task on matrices of some hundred rows waits longer for fresh pages
/// of the system than for its arithmetic. Does nothing where the C library has no such choice.
void KeepFreedMemory();

}  // namespace qmx
