// SPDX-License-Identifier: MIT
#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>

#include "exchange/exact_text.h"
#include "exchange/mat5_reader.h"
#include "exchange/mat_file.h"
#include "exchange/mat_layout.h"
#include "exchange/mat_variable.h"
#include "exchange/refusal.h"

namespace qmx {
namespace {

constexpr std::size_t kTag = 8;
constexpr std::uint32_t kFlags = 6;
constexpr std::uint32_t kNumbers = 9;

/// Integers and numbers are those of this machine, and the header says which they are.
template <class Value>
void Append(std::string& bytes, Value value) {
  char raw[sizeof value];
  std::memcpy(raw, &value, sizeof raw);
  bytes.append(raw, sizeof raw);
}

void AppendTag(std::string& bytes, std::uint32_t type, std::uint64_t size) {
  Append(bytes, type);
  Append(bytes, static_cast<std::uint32_t>(size));
}

std::uint64_t Padded(std::uint64_t size) { return (size + 7) / 8 * 8; }

/// A name of few letters lies within its tag.
void AppendName(std::string& bytes, const std::string& name) {
  constexpr std::size_t kShort = 4;
  const bool isShort = name.size() <= kShort;
  if (isShort) {
    Append(bytes, static_cast<std::uint32_t>(name.size() << 16 | kMat5Name));
  } else {
    AppendTag(bytes, kMat5Name, name.size());
  }
  bytes += name;
  bytes.append((isShort ? kShort : Padded(name.size())) - name.size(), '\0');
}

void AppendHeader(std::string& bytes) {
  constexpr std::size_t kText = 124;
  constexpr std::uint16_t kVersion = 0x0100;
  constexpr std::uint16_t kOrder = 'M' << 8 | 'I';
  bytes += "MATLAB 5.0 MAT-file, created by Orvane";
  bytes += '\0';
  bytes.append(kText - bytes.size(), ' ');
  Append(bytes, kVersion);
  Append(bytes, kOrder);
}

}  // namespace

bool IsMat(std::string_view bytes) { return MatVersionOf(bytes) != MatVersion::kNone; }

ForeignOutcome<std::string> WriteMat(const Matrix& values, const std::string& name) {
  return OutcomeOf<std::string>([&](ForeignOutcome<std::string>& outcome) {
    CheckWritable(values);
    std::string start;
    AppendTag(start, kFlags, 2 * sizeof(std::uint32_t));
    Append(start, kMatDouble);
    Append(start, std::uint32_t{0});
    AppendTag(start, kMat5Counts, 2 * sizeof(std::uint32_t));
    Append(start, static_cast<std::uint32_t>(values.Rows()));
    Append(start, static_cast<std::uint32_t>(values.Cols()));
    AppendName(start, name);
    const std::uint64_t size = values.Size() * sizeof(double);
    const std::uint64_t variableSize = start.size() + kTag + size;
    if (variableSize > std::numeric_limits<std::uint32_t>::max())
      throw Refusal("The matrix is too large for a MAT file.");

    std::string& bytes = outcome.content;
    bytes.reserve(kMat5Header + kTag + variableSize);
    AppendHeader(bytes);
    AppendTag(bytes, kMat5Matrix, variableSize);
    bytes += start;
    AppendTag(bytes, kNumbers, size);
    for (int j = 1; j <= values.Cols(); ++j) {
      for (int i = 1; i <= values.Rows(); ++i) Append(bytes, values(i, j));
    }
  });
}

}  // namespace qmx
