// SPDX-License-Identifier: MIT
#include "exchange/element_kind.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>

#include "exchange/refusal.h"
#include "exchange/word_reader.h"

namespace qmx {
namespace {

template <class Element>
Element Load(const char* bytes, bool swapped) {
  char raw[sizeof(Element)];
  std::memcpy(raw, bytes, sizeof raw);
  if (swapped) std::reverse(raw, raw + sizeof raw);
  Element element;
  std::memcpy(&element, raw, sizeof raw);
  return element;
}

/// True if the double that an element is rounded to is the element itself.
template <class Element>
bool IsExact(Element element, double value) {
  if constexpr (std::is_floating_point_v<Element>) {
    return std::isfinite(value);
  } else if constexpr (sizeof(Element) < sizeof(double)) {
    return true;
  } else {
    // The largest integers round up to a power of two that is no integer of this kind.
    return value < static_cast<double>(std::numeric_limits<Element>::max()) &&
           static_cast<Element>(value) == element;
  }
}

template <class Element>
[[noreturn]] void RefuseValue(Element element, std::size_t row, std::size_t col) {
  if constexpr (std::is_floating_point_v<Element>) {
    const char* name = std::isnan(element) ? "NaN" : element > 0 ? "Inf" : "-Inf";
    RefuseElement(row, col, "expected a finite number, but found \"" + std::string(name) + "\".");
  } else {
    RefuseElement(row, col, InexactInteger(std::to_string(element)));
  }
}

template <class Element>
double Convert(const char* bytes, bool swapped, std::size_t row, std::size_t col) {
  const auto element = Load<Element>(bytes, swapped);
  const auto value = static_cast<double>(element);
  if (!IsExact(element, value)) RefuseValue(element, row, col);
  return value;
}

template <class Element>
void ConvertRows(const ElementBlock& block, std::size_t first, std::size_t count, Matrix& values) {
  const auto cols = static_cast<std::size_t>(values.Cols());
  double* out = values.Data() + first * cols;
  for (std::size_t k = 0; k < count * cols; ++k) {
    out[k] = Convert<Element>(block.bytes + k * sizeof(Element), block.swapped,
                              first + k / cols + 1, k % cols + 1);
  }
}

/// In squares: what is next in one order is far away in the other.
template <class Element>
void ConvertColumns(const ElementBlock& block, std::size_t first, std::size_t count,
                    Matrix& values) {
  constexpr std::size_t kSide = 32;
  const auto rows = static_cast<std::size_t>(values.Rows());
  const auto cols = static_cast<std::size_t>(values.Cols());
  for (std::size_t top = 0; top < rows; top += kSide) {
    const std::size_t bottom = std::min(top + kSide, rows);
    for (std::size_t left = 0; left < count; left += kSide) {
      const std::size_t right = std::min(left + kSide, count);
      for (std::size_t i = top; i < bottom; ++i) {
        double* out = values.Data() + i * cols + first;
        for (std::size_t j = left; j < right; ++j) {
          out[j] = Convert<Element>(block.bytes + (j * rows + i) * sizeof(Element), block.swapped,
                                    i + 1, first + j + 1);
        }
      }
    }
  }
}

/// Does something with the type that a kind stands for.
template <class Do>
void ForKind(ElementKind kind, Do work) {
  static_assert(sizeof(float) == 4 && sizeof(double) == 8);
  switch (kind) {
    case ElementKind::kFloat32:
      return work.template operator()<float>();
    case ElementKind::kFloat64:
      return work.template operator()<double>();
    case ElementKind::kInt8:
      return work.template operator()<std::int8_t>();
    case ElementKind::kInt16:
      return work.template operator()<std::int16_t>();
    case ElementKind::kInt32:
      return work.template operator()<std::int32_t>();
    case ElementKind::kInt64:
      return work.template operator()<std::int64_t>();
    case ElementKind::kUint8:
      return work.template operator()<std::uint8_t>();
    case ElementKind::kUint16:
      return work.template operator()<std::uint16_t>();
    case ElementKind::kUint32:
      return work.template operator()<std::uint32_t>();
    case ElementKind::kUint64:
      return work.template operator()<std::uint64_t>();
  }
}

}  // namespace

std::size_t SizeOf(ElementKind kind) {
  std::size_t size = 0;
  ForKind(kind, [&]<class Element>() { size = sizeof(Element); });
  return size;
}

double ElementAt(const ElementBlock& block, std::size_t k) {
  double value = 0;
  ForKind(block.kind, [&]<class Element>() {
    value = static_cast<double>(Load<Element>(block.bytes + k * sizeof(Element), block.swapped));
  });
  return value;
}

void ConvertElements(const ElementBlock& block, std::size_t first, std::size_t count,
                     Matrix& values) {
  ForKind(block.kind, [&]<class Element>() {
    if (block.order == ElementOrder::kByRows) {
      ConvertRows<Element>(block, first, count, values);
    } else {
      ConvertColumns<Element>(block, first, count, values);
    }
  });
}

}  // namespace qmx
