// SPDX-License-Identifier: MIT
#include "exchange/mat5_variables.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "exchange/mat_layout.h"
#include "exchange/refusal.h"

namespace qmx {
namespace {

constexpr std::size_t kTag = 8;

constexpr const char* kTooFew = "The variable has not as many elements as its shape asks for.";

bool ReadFlags(Mat5Reader& reader, MatVariable& variable) {
  constexpr std::uint32_t kComplex = 0x800;
  constexpr std::uint32_t kLogical = 0x200;
  std::uint32_t flags = 0;
  if (!reader.Next() || !reader.ReadWord(flags)) return false;
  variable.matClass = flags & 0xFF;
  variable.complex = (flags & kComplex) != 0;
  variable.logical = (flags & kLogical) != 0;
  return true;
}

bool ReadShape(Mat5Reader& reader, MatVariable& variable) {
  constexpr std::uint64_t kLongest = 4096;
  if (!reader.Next() || reader.Size() > kLongest) return false;
  if (reader.Type() != kMat5Counts || reader.Size() < 2 * sizeof(std::uint32_t)) return true;
  for (std::uint32_t count = 0; reader.ReadWord(count);) variable.shape.push_back(count);
  return true;
}

bool ReadName(Mat5Reader& reader, MatVariable& variable) {
  constexpr std::uint64_t kLongest = 1 << 16;
  if (!reader.Next() || reader.Size() > kLongest) return false;
  if (reader.Type() != kMat5Name) return reader.Size() == 0;
  variable.name.resize(reader.Size());
  if (!reader.Read(variable.name.data(), variable.name.size())) return false;
  variable.name.resize(std::min(variable.name.find('\0'), variable.name.size()));
  return true;
}

/// What stands before the elements of a variable; false where it is not as it must be.
bool ReadStart(Mat5Reader& reader, MatVariable& variable) {
  return ReadFlags(reader, variable) && ReadShape(reader, variable) && ReadName(reader, variable);
}

std::uint64_t SizeOfType(std::uint32_t type) {
  const auto kind = KindOfMatType(type);
  return kind ? SizeOf(*kind) : 0;
}

/// True if the elements of a full matrix are as many as its shape says.
bool HasAllElements(Mat5Reader reader, const MatVariable& variable) {
  std::uint64_t elements = 1;
  for (const std::uint64_t count : variable.shape) {
    constexpr std::uint64_t kMost = 1ULL << 31;
    elements = std::min(elements, kMost) * count;
  }
  const bool hasData = reader.Next();
  const bool isRight =
      elements == 0 || (hasData && reader.Size() == elements * SizeOfType(reader.Type()));
  return isRight && (!hasData || reader.Fits());
}

}  // namespace

Mat5Variables::Mat5Variables(std::string_view bytes)
    : rest_(bytes.substr(kMat5Header)), bigEndian_(bytes.substr(kMat5Header - 2, 2) == "MI") {}

bool Mat5Variables::Next() {
  while (rest_.size() >= kTag) {
    type_ = MatWord(rest_, 0, bigEndian_);
    const std::size_t size = MatWord(rest_, 4, bigEndian_);
    data_ = rest_.substr(kTag, size);
    rest_.remove_prefix(std::min(kTag + size, rest_.size()));
    if (data_.empty()) continue;
    variable_ = {};
    Mat5Reader reader(type_, data_, bigEndian_);
    if (!ReadStart(reader, variable_)) {
      variable_ = {};
      variable_.damaged = true;
      return true;
    }
    if (!variable_.name.empty()) return true;
  }
  return false;
}

std::string Mat5Variables::ProblemOfStart() const {
  if (!KindOfMatClass(variable_.matClass)) return {};
  return HasAllElements(Elements(), variable_) ? std::string() : kTooFew;
}

std::string Mat5Variables::ProblemOfWhole() const {
  return Mat5Reader(type_, data_, bigEndian_).IsWhole() ? ProblemOfStart() : kDamagedMatVariable;
}

Mat5Reader Mat5Variables::Elements() const {
  Mat5Reader reader(type_, data_, bigEndian_);
  MatVariable variable;
  ReadStart(reader, variable);
  return reader;
}

std::map<std::string, std::string> ProblemsOfMat5(std::string_view bytes) {
  std::map<std::string, std::string> problems;
  for (Mat5Variables variables(bytes); variables.Next();) {
    std::string problem = variables.ProblemOfStart();
    if (!problem.empty()) problems.emplace(variables.Variable().name, std::move(problem));
  }
  return problems;
}

void CheckMat5Variable(std::string_view bytes, const std::string& name) {
  bool found = false;
  for (Mat5Variables variables(bytes); variables.Next();) {
    if (variables.Variable().name != name) continue;
    found = true;
    const std::string problem = variables.ProblemOfWhole();
    if (!problem.empty()) throw Refusal(problem);
  }
  if (!found) throw Refusal(kDamagedMatVariable);
}

}  // namespace qmx
