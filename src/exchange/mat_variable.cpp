// SPDX-License-Identifier: MIT
#include "exchange/mat_variable.h"

#include <iterator>

#include "base/words.h"
#include "exchange/refusal.h"

namespace qmx {
namespace {

const char* NameOf(const MatVariable& variable) {
  if (variable.damaged) return "damaged";
  if (variable.logical && variable.matClass != kMatSparse) return "logical";
  constexpr const char* kNames[] = {"empty",  "cell",   "struct", "object", "text",     "sparse",
                                    "double", "single", "int8",   "uint8",  "int16",    "uint16",
                                    "int32",  "uint32", "int64",  "uint64", "function", "object"};
  return variable.matClass < std::size(kNames) ? kNames[variable.matClass] : kNames[0];
}

std::string ShapeOf(const MatVariable& variable) {
  std::string text;
  for (const std::uint64_t count : variable.shape)
    text += (text.empty() ? "" : " x ") + std::to_string(count);
  return text;
}

}  // namespace

std::optional<ElementKind> KindOfMatClass(std::uint32_t matClass) {
  constexpr ElementKind kKinds[] = {
      ElementKind::kFloat64, ElementKind::kFloat32, ElementKind::kInt8,  ElementKind::kUint8,
      ElementKind::kInt16,   ElementKind::kUint16,  ElementKind::kInt32, ElementKind::kUint32,
      ElementKind::kInt64,   ElementKind::kUint64};
  if (matClass < kMatDouble || matClass - kMatDouble >= std::size(kKinds)) return std::nullopt;
  return kKinds[matClass - kMatDouble];
}

std::optional<ElementKind> KindOfMatType(std::uint32_t type) {
  switch (type) {
    case 1:
      return ElementKind::kInt8;
    case 2:
      return ElementKind::kUint8;
    case 3:
      return ElementKind::kInt16;
    case 4:
      return ElementKind::kUint16;
    case 5:
      return ElementKind::kInt32;
    case 6:
      return ElementKind::kUint32;
    case 7:
      return ElementKind::kFloat32;
    case 9:
      return ElementKind::kFloat64;
    case 12:
      return ElementKind::kInt64;
    case 13:
      return ElementKind::kUint64;
    default:
      return std::nullopt;
  }
}

bool IsComplexTable(const MatVariable& table) {
  constexpr std::uint64_t kColumns = 4;
  return table.shape.size() == 2 && table.shape[1] == kColumns;
}

std::string ProblemOf(const MatVariable& variable) {
  if (variable.damaged) return kDamagedMatVariable;
  constexpr std::size_t kMostDimensions = 32;
  const std::size_t dimensions = variable.shape.size();
  if (dimensions < 2 || dimensions > kMostDimensions) return "The variable has no shape.";
  if (!KindOfMatClass(variable.matClass) && variable.matClass != kMatSparse) {
    return "The variable is of type " + Quoted(NameOf(variable)) + " and no matrix of numbers.";
  }
  if (variable.complex)
    return "The variable holds complex numbers; the program has real numbers only.";
  if (dimensions > 2)
    return "The variable has more than two dimensions (" + ShapeOf(variable) + ").";
  return {};
}

ForeignVariable Listed(const MatVariable& variable) {
  constexpr std::size_t kLongestName = 80;
  constexpr std::size_t kLongestShape = 200;
  return {
      .name = variable.name.substr(0, kLongestName),
      .kind = std::string(variable.complex ? "complex " : "") + NameOf(variable),
      .shape = variable.isTable ? std::string() : ShapeOf(variable).substr(0, kLongestShape),
      .problem = ProblemOf(variable),
  };
}

void RefuseManyMatVariables() {
  throw Refusal("There are more than " + std::to_string(kMostMatVariables) + " variables.");
}

void RefuseDamagedMat() { throw Refusal("The file is damaged, or too large to be read."); }

}  // namespace qmx
