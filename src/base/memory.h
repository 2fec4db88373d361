#pragma once

#include <cstddef>

namespace qmx {

/// Bytes of memory that the machine can still give to this process without taking any from others.
std::size_t AvailableMemory();

/// From now on memory that is given back, up to 64 MB of it, stays with the process for what needs
/// memory next: without that a task on matrices of some hundred rows waits longer for fresh pages
/// of the system than for its arithmetic. Does nothing where the C library has no such choice.
void KeepFreedMemory();

}  // namespace qmx
