// SPDX-License-Identifier: MIT
#include "base/element_storage.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

#include "base/fault.h"

namespace qmx {
namespace {

/// In front of the elements. Its size lets the elements of a large matrix, whose memory comes in
/// whole pages after the allocator's own 16 bytes, begin at the start of a cache line.
struct Header {
  std::atomic<std::uint64_t> holds;  ///< The sum of all holds.
  std::size_t room;
  char filling[48 - sizeof(std::uint64_t) - sizeof(std::size_t)];
};
static_assert(sizeof(Header) % alignof(std::max_align_t) == 0);

Header* HeaderOf(double* elements) {
  return reinterpret_cast<Header*>(reinterpret_cast<char*>(elements) - sizeof(Header));
}

constexpr std::uint64_t Count(Hold hold) { return static_cast<std::uint64_t>(hold); }

std::uint64_t HoldsOf(double* elements) {
  return elements == nullptr ? 0 : HeaderOf(elements)->holds.load(std::memory_order_acquire);
}

constexpr std::uint64_t OwnersIn(std::uint64_t holds) { return holds >> 32; }

double* NewElements(std::size_t count, ElementStorage::Content content) {
  if (count == 0) return nullptr;
  constexpr std::size_t kMost = (std::numeric_limits<std::size_t>::max() - sizeof(Header)) / 8;
  static_assert(sizeof(double) == 8);
  if (count > kMost) throw RuntimeFault(Fault::kOutOfMemory);
  // calloc hands out pages that the system zeroes on first touch: a large matrix of zeros costs
  // nothing until it is used.
  const std::size_t size = sizeof(Header) + count * sizeof(double);
  void* block =
      content == ElementStorage::Content::kZeros ? std::calloc(1, size) : std::malloc(size);
  if (block == nullptr) throw RuntimeFault(Fault::kOutOfMemory);
  new (&static_cast<Header*>(block)->holds) std::atomic<std::uint64_t>(Count(Hold::kOwner));
  static_cast<Header*>(block)->room = count;
  return reinterpret_cast<double*>(static_cast<char*>(block) + sizeof(Header));
}

}  // namespace

template <Hold kHold>
ElementHold<kHold>::ElementHold(double* elements) : elements_(elements) {
  // Who holds elements may let others hold them: they cannot go meanwhile.
  if (elements_ != nullptr) {
    HeaderOf(elements_)->holds.fetch_add(Count(kHold), std::memory_order_relaxed);
  }
}

template <Hold kHold>
void ElementHold<kHold>::Release() {
  Header* const header = HeaderOf(elements_);
  // Where there is no other holder nobody can become one but through this one.
  if (header->holds.load(std::memory_order_acquire) == Count(kHold) ||
      header->holds.fetch_sub(Count(kHold), std::memory_order_acq_rel) == Count(kHold)) {
    std::free(header);
  }
}

template class ElementHold<Hold::kOwner>;
template class ElementHold<Hold::kView>;

ElementStorage::ElementStorage(std::size_t count, Content content)
    : ElementHold(NewElements(count, content), TakeOver()) {}

std::size_t ElementStorage::Room() const { return Get() == nullptr ? 0 : HeaderOf(Get())->room; }

bool ElementStorage::IsShared() const { return HoldsOf(Get()) > Count(Hold::kOwner); }

bool ElementStorage::HasOtherOwners() const { return OwnersIn(HoldsOf(Get())) > 1; }

}  // namespace qmx
