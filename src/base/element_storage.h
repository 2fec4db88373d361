// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

namespace qmx {

/// What a hold of elements is: that of a matrix that owns them, or that of a view.
enum class Hold : std::uint64_t {
  kOwner = (std::uint64_t{1} << 32) + 1,  ///< Counts among the owners and among all holders.
  kView = 1,                              ///< Counts among all holders alone.
};

/// The elements of a matrix in memory, counted by how many hold them: the matrices that own them
/// and the views of these. The last holder gives the memory back. Holders may come and go in
/// several threads. Owners and holders are two halves of one number, so that whoever comes or goes
/// changes both at once.
template <Hold kHold>
class ElementHold {
 public:
  ElementHold() = default;
  ElementHold(const ElementHold& other) : ElementHold(other.elements_) {}
  ElementHold(ElementHold&& other) noexcept : elements_(std::exchange(other.elements_, nullptr)) {}
  ElementHold& operator=(ElementHold other) noexcept {
    Swap(other);
    return *this;
  }
  ~ElementHold() {
    if (elements_ != nullptr) Release();
  }

  void Swap(ElementHold& other) noexcept { std::swap(elements_, other.elements_); }

  double* Get() const { return elements_; }

 protected:
  /// Holds the elements that somebody else holds.
  explicit ElementHold(double* elements);
  struct TakeOver {};
  /// Takes over a hold.
  ElementHold(double* elements, TakeOver) : elements_(elements) {}

 private:
  void Release();

  double* elements_ = nullptr;
};

/// The elements as a matrix owns them. A copy owns the same elements.
class ElementStorage : public ElementHold<Hold::kOwner> {
 public:
  ElementStorage() = default;
  enum class Content { kZeros, kUnset };
  /// Room for a number of elements, all zero or whatever is there; nothing for none.
  /// Faults: 7 (out of memory) where it cannot be had.
  ElementStorage(std::size_t count, Content content);

  /// For how many elements there is room.
  std::size_t Room() const;
  /// True if somebody else holds the same elements, as an owner or in a view.
  bool IsShared() const;
  /// True if somebody else owns them.
  bool HasOtherOwners() const;
};

/// The same for who reads them.
class ElementView : public ElementHold<Hold::kView> {
 public:
  ElementView() = default;
  explicit ElementView(const ElementStorage& storage) : ElementHold(storage.Get()) {}
};

}  // namespace qmx
