// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/matrix.h"

namespace qmx {

/// What a number is in the memory or the binary file of another program.
enum class ElementKind {
  kFloat32,
  kFloat64,
  kInt8,
  kInt16,
  kInt32,
  kInt64,
  kUint8,
  kUint16,
  kUint32,
  kUint64,
};

/// Bytes of one element.
std::size_t SizeOf(ElementKind kind);

enum class ElementOrder { kByRows, kByColumns };

/// Elements that lie one after the other, aligned or not.
struct ElementBlock {
  const char* bytes = nullptr;
  ElementKind kind = ElementKind::kFloat64;
  ElementOrder order = ElementOrder::kByRows;
  bool swapped = false;  ///< In the byte order that is not this machine's.
};

/// Element k of a block, counted from 0, as a double, whatever becomes of it.
double ElementAt(const ElementBlock& block, std::size_t k);

/// Turns whole columns, or whole rows, of a matrix into doubles: `count` of them from `first` on,
/// counted from 0, in the block's order. Refuses, with row and column, values that are no finite
/// number and integers that a double cannot hold exactly.
void ConvertElements(const ElementBlock& block, std::size_t first, std::size_t count,
                     Matrix& values);

}  // namespace qmx
