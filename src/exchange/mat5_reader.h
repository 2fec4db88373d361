// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace qmx {

// Types of the elements of a file of form 5 that hold no numbers of a matrix.
inline constexpr std::uint32_t kMat5Name = 1;
inline constexpr std::uint32_t kMat5Counts = 5;
inline constexpr std::uint32_t kMat5Matrix = 14;
inline constexpr std::uint32_t kMat5Compressed = 15;

/// Unpacks data in the form of zlib bit by bit: however large they become, little of them is in
/// memory at any time.
class Unpacker {
 public:
  explicit Unpacker(std::string_view packed);
  Unpacker(const Unpacker&) = delete;
  Unpacker& operator=(const Unpacker&) = delete;
  ~Unpacker();

  /// The next bytes; how many there were, fewer than asked for where the data end or are damaged.
  std::size_t Read(char* bytes, std::size_t size);
  /// True where Read has met the end of the data, and their check sum was right.
  bool HasEndedWell() const { return ended_; }

 private:
  struct Stream;
  std::unique_ptr<Stream> stream_;
  bool ended_ = false;
};

/// Reads a variable of a file of form 5, compressed or not: elements one after the other, each with
/// a tag that says its type and size; short ones have their data in the tag.
class Mat5Reader {
 public:
  /// Of an element of the file: its type, kMat5Matrix or kMat5Compressed, and what is behind its
  /// tag.
  Mat5Reader(std::uint32_t type, std::string_view data, bool bigEndian);

  /// Goes on to the next element; false where there is none.
  bool Next();
  std::uint32_t Type() const { return type_; }
  std::uint64_t Size() const { return size_; }
  /// True if the element ends within what the variable says of its own size.
  bool Fits() const { return end_ <= variableSize_; }
  /// Reads on in the data of the element; false where it or the file has not as many.
  bool Read(void* bytes, std::size_t size);
  /// The same for four bytes as an unsigned integer.
  bool ReadWord(std::uint32_t& word);

  /// Goes over all that is left. False for compressed data that are damaged, or not as long as the
  /// variable says.
  bool IsWhole();

  /// False where the data are none of a variable.
  bool IsVariable() const { return isVariable_; }
  bool IsBigEndian() const { return bigEndian_; }

 private:
  std::size_t Take(char* bytes, std::size_t size);
  void Skip(std::uint64_t size);

  std::string_view plain_;  ///< What is left where nothing is compressed.
  std::unique_ptr<Unpacker> unpacker_;
  bool bigEndian_;
  bool isVariable_ = true;
  std::uint64_t variableSize_ = 0;
  std::uint64_t position_ = 0;  ///< In the variable.
  std::uint32_t type_ = 0;
  std::uint64_t size_ = 0;
  std::uint64_t end_ = 0;      ///< Of the element's data, in the variable.
  std::uint64_t left_ = 0;     ///< Of the element's data.
  std::uint64_t padding_ = 0;  ///< Behind them.
  bool isShort_ = false;
  std::array<char, 4> shortData_{};
};

}  // namespace qmx
