// SPDX-License-Identifier: MIT
#include "exchange/mat5_elements.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <utility>

#include "exchange/mat_layout.h"
#include "exchange/refusal.h"

namespace qmx {
namespace {

constexpr std::size_t kTag = 8;
/// Shape and name of a variable end long before.
constexpr std::size_t kStartSize = 4096;

constexpr std::uint32_t kMatrix = 14;
constexpr std::uint32_t kCompressed = 15;

struct Element {
  std::uint32_t type = 0;
  std::string_view data;
};

/// Elements one after the other, each with a tag; short ones have their data in the tag.
class ElementReader {
 public:
  ElementReader(std::string_view bytes, bool bigEndian)
      : bytes_(bytes), rest_(bytes), bigEndian_(bigEndian) {}

  std::uint32_t WordAt(std::string_view bytes, std::size_t at) const {
    return MatWord(bytes, at, bigEndian_);
  }
  /// The next element; of its data no more than there is. Nothing where there is no tag left.
  std::optional<Element> Next() {
    if (rest_.size() < kTag) return std::nullopt;
    const std::uint32_t type = WordAt(rest_, 0);
    if (type > 0xFFFF) {
      const Element element{type & 0xFFFF, rest_.substr(4, std::min(type >> 16, 4U))};
      size_ = type >> 16;
      end_ = Position() + 4 + size_;
      rest_.remove_prefix(kTag);
      return element;
    }
    size_ = WordAt(rest_, 4);
    rest_.remove_prefix(kTag);
    end_ = Position() + size_;
    const Element element{type, rest_.substr(0, size_)};
    const std::size_t padded = type == kCompressed ? size_ : (size_ + 7) / 8 * 8;
    rest_.remove_prefix(std::min(padded, rest_.size()));
    return element;
  }
  /// How long the last element says it is, and where it would then end.
  std::size_t Size() const { return size_; }
  std::uint64_t End() const { return end_; }

 private:
  std::uint64_t Position() const { return bytes_.size() - rest_.size(); }

  std::string_view bytes_;
  std::string_view rest_;
  bool bigEndian_;
  std::size_t size_ = 0;
  std::uint64_t end_ = 0;
};

/// The first bytes of compressed data and, if all of it is gone through, how many there are.
struct Unpacked {
  std::string start;
  std::uint64_t size = 0;
  bool isWhole = false;
};

Unpacked Unpack(std::string_view data, bool all) {
  Unpacked unpacked;
  z_stream stream{};
  if (inflateInit(&stream) != Z_OK) return unpacked;
  // The library does not write there.
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
  stream.avail_in = static_cast<uInt>(data.size());
  std::array<char, 1 << 15> room;
  int state = Z_OK;
  while (state == Z_OK && (all || unpacked.size < kStartSize)) {
    stream.next_out = reinterpret_cast<Bytef*>(room.data());
    stream.avail_out = static_cast<uInt>(room.size());
    state = inflate(&stream, Z_NO_FLUSH);
    const std::size_t count = room.size() - stream.avail_out;
    const std::size_t kept = std::min(count, kStartSize - unpacked.start.size());
    unpacked.start.append(room.data(), kept);
    unpacked.size += count;
  }
  inflateEnd(&stream);
  unpacked.isWhole = state == Z_STREAM_END;
  return unpacked;
}

std::size_t SizeOfType(std::uint32_t type) {
  constexpr std::array<std::size_t, 14> kSizes = {0, 1, 1, 2, 2, 4, 4, 4, 0, 8, 0, 0, 8, 8};
  return type < kSizes.size() ? kSizes[type] : 0;
}

/// What the start of a variable says.
struct VariableStart {
  std::string name;
  bool hasNumbers = false;
  bool fits = false;      ///< Its data are as long as its shape asks for.
  std::uint64_t end = 0;  ///< Where these data end.
};

VariableStart ReadStart(std::string_view start, bool bigEndian) {
  VariableStart variable;
  ElementReader reader(start, bigEndian);
  const auto flags = reader.Next();
  const auto shape = reader.Next();
  const auto name = reader.Next();
  const auto data = reader.Next();
  if (!flags || flags->data.size() < 4 || !shape || !name) return variable;
  variable.name = name->data;
  constexpr std::uint32_t kFirstOfNumbers = 6;
  constexpr std::uint32_t kLastOfNumbers = 15;
  const std::uint32_t kind = reader.WordAt(flags->data, 0) & 0xFF;
  variable.hasNumbers = kind >= kFirstOfNumbers && kind <= kLastOfNumbers;
  std::uint64_t elements = 1;
  for (std::size_t at = 0; at + 4 <= shape->data.size(); at += 4) {
    constexpr std::uint64_t kMost = 1ULL << 31;
    elements = std::min(elements, kMost) * reader.WordAt(shape->data, at);
  }
  variable.fits = elements == 0 || (data && reader.Size() == elements * SizeOfType(data->type));
  variable.end = reader.End();
  return variable;
}

bool IsBigEndian(std::string_view bytes) { return bytes.substr(kMat5Header - 2, 2) == "MI"; }

constexpr const char* kTooFew = "The variable has not as many elements as its shape asks for.";
constexpr const char* kDamaged = "The data of the variable are damaged.";

/// The problem of a variable that `element` holds, and its name.
std::pair<std::string, std::string> ProblemOf(const Element& element, bool bigEndian, bool all) {
  if (element.type == kMatrix) {
    const VariableStart start = ReadStart(element.data, bigEndian);
    const bool fits = start.fits && start.end <= element.data.size();
    return {start.name, start.hasNumbers && !fits ? kTooFew : ""};
  }
  if (element.type != kCompressed) return {};
  const Unpacked unpacked = Unpack(element.data, all);
  if (unpacked.start.size() < kTag) return {};
  const std::string_view bytes = unpacked.start;
  const VariableStart start = ReadStart(bytes.substr(kTag), bigEndian);
  const std::size_t size = kTag + MatWord(bytes, 4, bigEndian);
  if (all && (!unpacked.isWhole || unpacked.size != size)) return {start.name, kDamaged};
  const bool fits = start.fits && kTag + start.end <= size;
  return {start.name, start.hasNumbers && !fits ? kTooFew : ""};
}

}  // namespace

std::map<std::string, std::string> ProblemsOfMat5(std::string_view bytes) {
  std::map<std::string, std::string> problems;
  const bool bigEndian = IsBigEndian(bytes);
  ElementReader reader(bytes.substr(kMat5Header), bigEndian);
  while (const auto element = reader.Next()) {
    auto [name, problem] = ProblemOf(*element, bigEndian, false);
    if (!problem.empty()) problems.emplace(std::move(name), std::move(problem));
  }
  return problems;
}

void CheckMat5Variable(std::string_view bytes, const std::string& name) {
  const bool bigEndian = IsBigEndian(bytes);
  ElementReader reader(bytes.substr(kMat5Header), bigEndian);
  bool found = false;
  while (const auto element = reader.Next()) {
    if (ProblemOf(*element, bigEndian, false).first != name) continue;
    found = true;
    const std::string problem = ProblemOf(*element, bigEndian, true).second;
    if (!problem.empty()) throw Refusal(problem);
  }
  if (!found) throw Refusal(kDamaged);
}

}  // namespace qmx
