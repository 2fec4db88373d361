#pragma once

#include <cstddef>
#include <utility>

namespace qmx {

/// The elements of a matrix in memory, counted by how many hold them: the matrix itself and the
/// views of it. A copy holds the same elements; the last holder gives the memory back. Holders may
/// come and go in several threads.
class ElementStorage {
 public:
  ElementStorage() = default;
  enum class Content { kZeros, kUnset };
  /// Room for a number of elements, all zero or whatever is there; nothing for none.
  /// Faults: 7 (out of memory) where it cannot be had.
  ElementStorage(std::size_t count, Content content);
  ElementStorage(const ElementStorage& other) : elements_(other.elements_) { Hold(); }
  ElementStorage(ElementStorage&& other) noexcept
      : elements_(std::exchange(other.elements_, nullptr)) {}
  ElementStorage& operator=(ElementStorage other) noexcept {
    std::swap(elements_, other.elements_);
    return *this;
  }
  ~ElementStorage() {
    if (elements_ != nullptr) Release();
  }

  void Swap(ElementStorage& other) noexcept { std::swap(elements_, other.elements_); }

  double* Get() const { return elements_; }
  /// For how many elements there is room.
  std::size_t Room() const;
  /// True if somebody else holds the same elements.
  bool IsShared() const;

 private:
  void Hold();
  void Release();

  double* elements_ = nullptr;
};

}  // namespace qmx
