// SPDX-License-Identifier: MIT
#include "exchange/mat5_reader.h"

#include <zlib.h>

#include <algorithm>
#include <cstring>

#include "exchange/mat_layout.h"
#include "exchange/mat_variable.h"

namespace qmx {
namespace {

constexpr std::size_t kTag = 8;
constexpr std::size_t kRoom = 1 << 15;

}  // namespace

struct Unpacker::Stream {
  z_stream zlib{};
  std::array<char, kRoom> room;
  std::string_view ready;  ///< Of the room, what has not been read.
};

Unpacker::Unpacker(std::string_view packed) : stream_(std::make_unique<Stream>()) {
  z_stream& zlib = stream_->zlib;
  // The library does not write there.
  zlib.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
  zlib.avail_in = static_cast<uInt>(packed.size());
  if (inflateInit(&zlib) != Z_OK) RefuseDamagedMat();
}

Unpacker::~Unpacker() { inflateEnd(&stream_->zlib); }

std::size_t Unpacker::Read(char* bytes, std::size_t size) {
  z_stream& zlib = stream_->zlib;
  std::string_view& ready = stream_->ready;
  std::size_t done = 0;
  while (done < size) {
    if (ready.empty()) {
      if (ended_) break;
      zlib.next_out = reinterpret_cast<Bytef*>(stream_->room.data());
      zlib.avail_out = kRoom;
      // What comes before a damage is there all the same.
      ended_ = inflate(&zlib, Z_NO_FLUSH) == Z_STREAM_END;
      ready = {stream_->room.data(), kRoom - zlib.avail_out};
      if (ready.empty()) break;
    }
    const std::size_t count = std::min(size - done, ready.size());
    std::memcpy(bytes + done, ready.data(), count);
    ready.remove_prefix(count);
    done += count;
  }
  return done;
}

Mat5Reader::Mat5Reader(std::uint32_t type, std::string_view data, bool bigEndian)
    : plain_(data), bigEndian_(bigEndian), variableSize_(data.size()) {
  if (type != kMat5Compressed) {
    isVariable_ = type == kMat5Matrix;
    return;
  }
  unpacker_ = std::make_unique<Unpacker>(data);
  std::array<char, kTag> tag;
  isVariable_ = unpacker_->Read(tag.data(), kTag) == kTag &&
                MatWord({tag.data(), kTag}, 0, bigEndian) == kMat5Matrix;
  variableSize_ = isVariable_ ? MatWord({tag.data(), kTag}, 4, bigEndian) : 0;
}

std::size_t Mat5Reader::Take(char* bytes, std::size_t size) {
  std::size_t count = std::min(size, plain_.size());
  if (unpacker_) {
    count = unpacker_->Read(bytes, size);
  } else {
    std::memcpy(bytes, plain_.data(), count);
    plain_.remove_prefix(count);
  }
  position_ += count;
  return count;
}

void Mat5Reader::Skip(std::uint64_t size) {
  if (!unpacker_) {
    const std::size_t count = std::min<std::uint64_t>(size, plain_.size());
    plain_.remove_prefix(count);
    position_ += count;
    return;
  }
  std::array<char, 4096> room;
  while (size > 0) {
    const std::size_t count = Take(room.data(), std::min<std::uint64_t>(size, room.size()));
    if (count == 0) return;
    size -= count;
  }
}

bool Mat5Reader::Next() {
  if (!isVariable_) return false;
  Skip(isShort_ ? 0 : left_ + padding_);
  left_ = 0;
  padding_ = 0;
  std::array<char, kTag> tag;
  if (Take(tag.data(), kTag) != kTag) return false;
  const std::string_view bytes(tag.data(), kTag);
  type_ = MatWord(bytes, 0, bigEndian_);
  isShort_ = type_ > 0xFFFF;
  size_ = isShort_ ? type_ >> 16 : MatWord(bytes, 4, bigEndian_);
  if (isShort_) {
    if (size_ > shortData_.size()) return false;
    type_ &= 0xFFFF;
    std::copy_n(tag.data() + 4, shortData_.size(), shortData_.data());
  } else {
    padding_ = (8 - size_ % 8) % 8;
  }
  left_ = size_;
  end_ = isShort_ ? position_ : position_ + size_;
  return true;
}

bool Mat5Reader::Read(void* bytes, std::size_t size) {
  if (size > left_) return false;
  char* const to = static_cast<char*>(bytes);
  if (isShort_) {
    std::copy_n(shortData_.data() + (size_ - left_), size, to);
  } else if (Take(to, size) != size) {
    return false;
  }
  left_ -= size;
  return true;
}

bool Mat5Reader::ReadWord(std::uint32_t& word) {
  std::array<char, 4> bytes;
  if (!Read(bytes.data(), bytes.size())) return false;
  word = MatWord({bytes.data(), bytes.size()}, 0, bigEndian_);
  return true;
}

bool Mat5Reader::IsWhole() {
  if (!isVariable_) return false;
  if (!unpacker_) return true;
  // One more than there may be, so that the end is met.
  Skip(variableSize_ + 1 - std::min(position_, variableSize_ + 1));
  return position_ == variableSize_ && unpacker_->HasEndedWell();
}

}  // namespace qmx
