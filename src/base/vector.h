// SPDX-License-Identifier: MIT
#pragma once

#include <cassert>
#include <cstddef>
#include <vector>

namespace qmx {

/// Numbers of one kind in a row, counted from 1 as formulas count them: v(1) to v(v.Size()).
template <class T>
class Vector {
 public:
  Vector() = default;
  /// So many zeros.
  explicit Vector(int size) : elements_(static_cast<std::size_t>(size)) {}

  int Size() const { return static_cast<int>(elements_.size()); }
  bool IsEmpty() const { return elements_.empty(); }

  /// Element i, not checked in optimised builds.
  T& operator()(int i) {
    assert(i >= 1 && i <= Size());
    return elements_[static_cast<std::size_t>(i) - 1];
  }
  const T& operator()(int i) const {
    assert(i >= 1 && i <= Size());
    return elements_[static_cast<std::size_t>(i) - 1];
  }

  /// The elements from i on, one after the other in memory; i may be one behind the last.
  T* From(int i) {
    assert(i >= 1 && i <= Size() + 1);
    return elements_.data() + (i - 1);
  }
  const T* From(int i) const {
    assert(i >= 1 && i <= Size() + 1);
    return elements_.data() + (i - 1);
  }

  auto begin() { return elements_.begin(); }
  auto end() { return elements_.end(); }
  auto begin() const { return elements_.begin(); }
  auto end() const { return elements_.end(); }

 private:
  std::vector<T> elements_;
};

}  // namespace qmx
