// SPDX-License-Identifier: MIT
#pragma once

#include <zlib.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace qmx::test {

/// Writes numbers in one of the two byte orders.
class OrderedBytes {
 public:
  explicit OrderedBytes(bool bigEndian) : bigEndian_(bigEndian) {}

  template <class Number>
  std::string Of(Number number) const {
    std::string bytes(sizeof number, '\0');
    std::memcpy(bytes.data(), &number, sizeof number);
    if (bigEndian_ != (std::endian::native == std::endian::big))
      std::reverse(bytes.begin(), bytes.end());
    return bytes;
  }
  template <class Number>
  std::string Of(const std::vector<Number>& numbers) const {
    std::string bytes;
    for (const Number number : numbers) bytes += Of(number);
    return bytes;
  }
  bool IsBig() const { return bigEndian_; }

 private:
  bool bigEndian_;
};

using Counts = std::vector<std::uint32_t>;
using Numbers = std::vector<double>;

/// Parts of files of form 5 made by hand, such as no library would write.
class Mat5Maker {
 public:
  explicit Mat5Maker(bool bigEndian) : order_(bigEndian) {}

  std::string Header() const {
    std::string header(124, ' ');
    return header + order_.Of(std::uint16_t{0x0100}) + (order_.IsBig() ? "MI" : "IM");
  }
  /// An element with its tag; few bytes lie in the tag.
  std::string Element(std::uint32_t type, const std::string& data) const {
    const auto size = static_cast<std::uint32_t>(data.size());
    const bool isShort = size > 0 && size <= 4;
    std::string bytes = isShort ? order_.Of(size << 16 | type) + data : Long(type, data);
    bytes.resize((bytes.size() + 7) / 8 * 8);
    return bytes;
  }
  template <class Number>
  std::string Of(std::uint32_t type, const std::vector<Number>& numbers) const {
    return Element(type, order_.Of(numbers));
  }
  /// A variable: flags and class, shape and name, then the elements behind these.
  std::string Variable(const std::string& name, std::uint32_t flagsAndClass, const Counts& shape,
                       const std::string& elements, std::uint32_t typeOfName = 1) const {
    return Long(
        14, Of(6, Counts{flagsAndClass, 0}) + Of(5, shape) + Element(typeOfName, name) + elements);
  }
  /// A full matrix of doubles.
  std::string Full(const std::string& name, const Counts& shape, const Numbers& numbers) const {
    return Variable(name, 6, shape, Of(9, numbers));
  }
  /// A sparse matrix S of doubles.
  std::string Sparse(const Counts& shape, const Counts& rows, const Counts& starts,
                     const Numbers& values) const {
    return Variable("S", 5, shape, Of(5, rows) + Of(5, starts) + Of(9, values));
  }
  /// A variable, compressed.
  std::string Compressed(const std::string& variable) const {
    const auto whole = static_cast<uLong>(variable.size());
    uLongf size = compressBound(whole);
    std::string data(size, '\0');
    compress(reinterpret_cast<Bytef*>(data.data()), &size,
             reinterpret_cast<const Bytef*>(variable.data()), whole);
    data.resize(size);
    return Long(15, data);
  }

 private:
  std::string Long(std::uint32_t type, const std::string& data) const {
    return order_.Of(type) + order_.Of(static_cast<std::uint32_t>(data.size())) + data;
  }

  OrderedBytes order_;
};

/// A variable of a file of form 4; `type` are its digits for the kind of numbers and of matrix.
template <class Number>
std::string Mat4Variable(bool bigEndian, std::uint32_t type, const std::string& name,
                         const Counts& shape, const std::vector<Number>& numbers,
                         std::uint32_t isComplex = 0) {
  const OrderedBytes order(bigEndian);
  const std::uint32_t machine = bigEndian ? 1000 : 0;
  return order.Of(Counts{machine + type, shape[0], shape[1], isComplex,
                         static_cast<std::uint32_t>(name.size() + 1)}) +
         name + '\0' + order.Of(numbers);
}

}  // namespace qmx::test
