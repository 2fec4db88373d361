#pragma once

#include <cstddef>

namespace qmx {

/// Bytes of memory that the machine can still give to this process without taking any from others.
std::size_t AvailableMemory();

}  // namespace qmx
