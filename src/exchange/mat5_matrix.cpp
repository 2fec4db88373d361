// SPDX-License-Identifier: MIT
#include "exchange/mat5_matrix.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <string>

#include "exchange/element_kind.h"
#include "exchange/refusal.h"
#include "exchange/size_limits.h"

namespace qmx {
namespace {

bool IsSwapped(const Mat5Reader& reader) {
  return reader.IsBigEndian() != (std::endian::native == std::endian::big);
}

// ---- Full matrices

/// True if an element of a class may have a value. Files keep numbers in a smaller type than that
/// of their class where all of them fit.
bool IsOfClass(double value, ElementKind kind) {
  const int bits = static_cast<int>(8 * SizeOf(kind));
  switch (kind) {
    case ElementKind::kFloat32:
    case ElementKind::kFloat64:
      return true;
    case ElementKind::kInt8:
    case ElementKind::kInt16:
    case ElementKind::kInt32:
    case ElementKind::kInt64:
      return value == std::floor(value) && value >= -std::ldexp(1.0, bits - 1) &&
             value < std::ldexp(1.0, bits - 1);
    default:
      return value == std::floor(value) && value >= 0 && value < std::ldexp(1.0, bits);
  }
}

/// Makes numbers that are kept in another type those of their class.
void ToClass(ElementKind kind, Matrix& values) {
  const auto cols = static_cast<std::size_t>(values.Cols());
  for (std::size_t k = 0; k < values.Size(); ++k) {
    double& value = values.Data()[k];
    if (!IsOfClass(value, kind)) RefuseDamagedMat();
    if (kind != ElementKind::kFloat32) continue;
    const std::size_t row = k / cols + 1;
    value = static_cast<double>(static_cast<float>(value));
    if (std::isinf(value)) {
      RefuseElement(row, k % cols + 1,
                    "expected a finite number, but found \"" +
                        std::string(value > 0 ? "Inf" : "-Inf") + "\".");
    }
  }
}

void ReadFull(Mat5Reader& reader, ElementKind kind, Matrix& values) {
  if (!reader.Next()) RefuseDamagedMat();
  const auto stored = KindOfMatType(reader.Type());
  if (!stored) RefuseDamagedMat();
  constexpr std::size_t kBlock = 1 << 20;
  const std::size_t columnSize = static_cast<std::size_t>(values.Rows()) * SizeOf(*stored);
  const std::size_t columns = std::max<std::size_t>(kBlock / columnSize, 1);
  const auto all = static_cast<std::size_t>(values.Cols());
  std::string block;
  for (std::size_t first = 0; first < all; first += columns) {
    const std::size_t count = std::min(columns, all - first);
    block.resize(count * columnSize);
    if (!reader.Read(block.data(), block.size())) RefuseDamagedMat();
    ConvertElements({block.data(), *stored, ElementOrder::kByColumns, IsSwapped(reader)}, first,
                    count, values);
  }
  if (*stored != kind) ToClass(kind, values);
}

// ---- Sparse matrices: the rows of all entries, for each column where its entries begin, and the
// values, one element of the file behind the other. They are read side by side, so that nothing but
// the matrix itself is kept.

/// A reader that stands in one of the elements of a variable.
Mat5Reader ElementOf(const Mat5Variables& variables, int index) {
  Mat5Reader reader = variables.Elements();
  for (int k = 0; k <= index; ++k) {
    if (!reader.Next()) RefuseDamagedMat();
  }
  return reader;
}

class Entries {
 public:
  explicit Entries(const Mat5Variables& variables)
      : rows_(ElementOf(variables, 0)),
        starts_(ElementOf(variables, 1)),
        values_(ElementOf(variables, 2)) {
    const auto kind = KindOfMatType(values_.Type());
    if (!kind) RefuseDamagedMat();
    kind_ = *kind;
  }

  /// Where the entries of the next column begin, and at last where all of them end.
  std::uint32_t NextStart() {
    std::uint32_t start = 0;
    if (!starts_.ReadWord(start)) RefuseDamagedMat();
    return start;
  }
  std::uint32_t NextRow() {
    std::uint32_t row = 0;
    if (!rows_.ReadWord(row)) RefuseDamagedMat();
    return row;
  }
  double NextValue() {
    std::array<char, sizeof(double)> bytes;
    if (!values_.Read(bytes.data(), SizeOf(kind_))) RefuseDamagedMat();
    return ElementAt({.bytes = bytes.data(), .kind = kind_, .swapped = IsSwapped(values_)}, 0);
  }

 private:
  Mat5Reader rows_;
  Mat5Reader starts_;
  Mat5Reader values_;
  ElementKind kind_ = ElementKind::kFloat64;
};

void ReadSparse(Entries entries, Matrix& values) {
  std::uint32_t k = 0;
  // The first column's begin at the first entry.
  entries.NextStart();
  for (int col = 1; col <= values.Cols(); ++col) {
    const std::uint32_t end = entries.NextStart();
    if (end < k) RefuseDamagedMat();
    for (; k < end; ++k) {
      const std::uint32_t row = entries.NextRow();
      const double value = entries.NextValue();
      if (row >= static_cast<std::uint32_t>(values.Rows())) RefuseDamagedMat();
      if (!std::isfinite(value))
        RefuseElement(row + std::size_t{1}, col, "expected a finite number.");
      values(static_cast<int>(row) + 1, col) = value;
    }
  }
}

}  // namespace

Matrix ReadMat5Matrix(const Mat5Variables& variables, std::size_t held, const Memory& memory) {
  const MatVariable& variable = variables.Variable();
  CheckShape(variable.shape[0], variable.shape[1], held, Storage::kUnfolds, memory);
  const std::string problem = variables.ProblemOfWhole();
  if (!problem.empty()) throw Refusal(problem);
  const int rows = static_cast<int>(variable.shape[0]);
  const int cols = static_cast<int>(variable.shape[1]);
  if (variable.matClass == kMatSparse) {
    Matrix values(rows, cols);
    ReadSparse(Entries(variables), values);
    return values;
  }
  Matrix values = Matrix::Unset(rows, cols);
  Mat5Reader reader = variables.Elements();
  ReadFull(reader, *KindOfMatClass(variable.matClass), values);
  return values;
}

}  // namespace qmx
