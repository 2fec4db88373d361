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
  std::atomic<std::size_t> holders;
  std::size_t room;
  char filling[48 - 2 * sizeof(std::size_t)];
};
static_assert(sizeof(Header) % alignof(std::max_align_t) == 0);

Header* HeaderOf(double* elements) {
  return reinterpret_cast<Header*>(reinterpret_cast<char*>(elements) - sizeof(Header));
}

}  // namespace

ElementStorage::ElementStorage(std::size_t count, Content content) {
  if (count == 0) return;
  constexpr std::size_t kMost = (std::numeric_limits<std::size_t>::max() - sizeof(Header)) / 8;
  static_assert(sizeof(double) == 8);
  if (count > kMost) throw RuntimeFault(Fault::kOutOfMemory);
  // calloc hands out pages that the system zeroes on first touch: a large matrix of zeros costs
  // nothing until it is used.
  const std::size_t size = sizeof(Header) + count * sizeof(double);
  void* block = content == Content::kZeros ? std::calloc(1, size) : std::malloc(size);
  if (block == nullptr) throw RuntimeFault(Fault::kOutOfMemory);
  new (&static_cast<Header*>(block)->holders) std::atomic<std::size_t>(1);
  static_cast<Header*>(block)->room = count;
  elements_ = reinterpret_cast<double*>(static_cast<char*>(block) + sizeof(Header));
}

std::size_t ElementStorage::Room() const {
  return elements_ == nullptr ? 0 : HeaderOf(elements_)->room;
}

bool ElementStorage::IsShared() const {
  return elements_ != nullptr && HeaderOf(elements_)->holders > 1;
}

void ElementStorage::Hold() {
  if (elements_ != nullptr) ++HeaderOf(elements_)->holders;
}

void ElementStorage::Release() {
  Header* header = HeaderOf(elements_);
  if (--header->holders == 0) std::free(header);
}

}  // namespace qmx
