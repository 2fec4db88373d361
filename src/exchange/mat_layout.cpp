// SPDX-License-Identifier: MIT
#include "exchange/mat_layout.h"

#include <iterator>
#include <string>

#include "exchange/refusal.h"

namespace qmx {
namespace {

constexpr std::size_t kVersionOf5 = 124;
constexpr std::size_t kHeaderOf4 = 20;

[[noreturn]] void RefuseCut(int variable) {
  throw Refusal("The file ends within its variable " + std::to_string(variable) +
                "; it seems to be cut off.");
}

void CheckLayout4(std::string_view bytes) {
  for (int variable = 1; !bytes.empty(); ++variable) {
    const auto start = Mat4StartOf(bytes);
    if (!start && bytes.size() >= kHeaderOf4) {
      throw Refusal("Variable " + std::to_string(variable) +
                    " of the file does not begin as variables do; the file is damaged.");
    }
    if (!start || start->end > bytes.size()) RefuseCut(variable);
    bytes.remove_prefix(start->end);
  }
}

void CheckLayout5(std::string_view bytes) {
  const bool bigEndian = bytes.substr(kMat5Header - 2, 2) == "MI";
  bytes.remove_prefix(kMat5Header);
  constexpr std::size_t kTag = 8;
  for (int variable = 1; !bytes.empty(); ++variable) {
    if (bytes.size() < kTag) RefuseCut(variable);
    const std::size_t size = kTag + MatWord(bytes, 4, bigEndian);
    if (size > bytes.size()) RefuseCut(variable);
    bytes.remove_prefix(size);
  }
}

}  // namespace

std::uint32_t MatWord(std::string_view bytes, std::size_t at, bool bigEndian) {
  std::uint32_t word = 0;
  for (std::size_t k = 0; k < 4; ++k) {
    const std::size_t place = bigEndian ? k : 3 - k;
    word = word << 8 | static_cast<unsigned char>(bytes[at + place]);
  }
  return word;
}

std::optional<Mat4Start> Mat4StartOf(std::string_view bytes) {
  if (bytes.size() < kHeaderOf4) return std::nullopt;
  // The type has decimal digits: machine, 0, kind of number, kind of matrix.
  constexpr std::uint32_t kBigMachine = 1000;
  const bool bigEndian = MatWord(bytes, 0, true) / kBigMachine == 1;
  const std::uint32_t type = MatWord(bytes, 0, bigEndian);
  const std::uint32_t machine = type / kBigMachine;
  constexpr ElementKind kKinds[] = {ElementKind::kFloat64, ElementKind::kFloat32,
                                    ElementKind::kInt32,   ElementKind::kInt16,
                                    ElementKind::kUint16,  ElementKind::kUint8};
  const std::uint32_t number = type / 10 % 10;
  const std::uint32_t parts = MatWord(bytes, 12, bigEndian);
  const std::uint32_t nameSize = MatWord(bytes, 16, bigEndian);
  constexpr std::uint32_t kLongestName = 4096;
  if (machine != (bigEndian ? 1U : 0U) || type / 100 % 10 != 0 || number >= std::size(kKinds) ||
      type % 10 > 2 || parts > 1 || nameSize < 2 || nameSize > kLongestName)
    return std::nullopt;
  const std::string_view name = bytes.substr(kHeaderOf4, nameSize);
  if (name.empty() || (name.size() == nameSize && name.back() != '\0')) return std::nullopt;
  constexpr std::uint32_t kMost = 0x7FFFFFFF;
  const std::uint64_t rows = MatWord(bytes, 4, bigEndian);
  const std::uint64_t cols = MatWord(bytes, 8, bigEndian);
  // The product stays below 2^62, so that its bytes may be counted up to here.
  if (rows > kMost || cols > kMost || rows * cols > (1ULL << 58)) return std::nullopt;
  const std::uint64_t elements = kHeaderOf4 + nameSize;
  return Mat4Start{.bigEndian = bigEndian,
                   .kind = kKinds[number],
                   .form = static_cast<Mat4Form>(type % 10),
                   .rows = rows,
                   .cols = cols,
                   .complex = parts == 1,
                   .name = name,
                   .elements = elements,
                   .end = elements + rows * cols * SizeOf(kKinds[number]) * (1 + parts)};
}

MatVersion MatVersionOf(std::string_view bytes) {
  if (bytes.size() >= kMat5Header) {
    const std::string_view order = bytes.substr(kMat5Header - 2, 2);
    if (order == "IM" || order == "MI") {
      const char major = bytes[kVersionOf5 + (order == "IM" ? 1 : 0)];
      if (major == 1) return MatVersion::k5;
      if (major == 2) return MatVersion::k73;
    }
  }
  return Mat4StartOf(bytes) ? MatVersion::k4 : MatVersion::kNone;
}

void CheckMatLayout(std::string_view bytes) {
  const MatVersion version = MatVersionOf(bytes);
  if (version == MatVersion::kNone) throw Refusal("The file is no MAT file.");
  if (version == MatVersion::k4) CheckLayout4(bytes);
  if (version == MatVersion::k5) CheckLayout5(bytes);
}

}  // namespace qmx
