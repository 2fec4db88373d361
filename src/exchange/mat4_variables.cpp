// SPDX-License-Identifier: MIT
#include "exchange/mat4_variables.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "exchange/mat_layout.h"
#include "exchange/refusal.h"
#include "exchange/size_limits.h"

namespace qmx {
namespace {

constexpr std::uint64_t kRow = 0;
constexpr std::uint64_t kCol = 1;
constexpr std::uint64_t kValue = 2;

/// A row of the table of a sparse matrix for each of its entries (row, column, value), and one for
/// its shape.
class EntryTable {
 public:
  EntryTable(const MatVariable& variable, const ElementBlock& elements)
      : rows_(variable.shape[0]), elements_(elements) {
    if (variable.shape[1] != kValue + 1 || elements.kind != ElementKind::kFloat64)
      RefuseDamagedMat();
  }
  std::uint64_t Entries() const { return rows_ - 1; }
  double At(std::uint64_t k, std::uint64_t col) const {
    return ElementAt(elements_, col * rows_ + k);
  }
  /// The same for a count from `least` to `most`. Refuses what is none.
  std::uint64_t CountAt(std::uint64_t k, std::uint64_t col, double least, double most) const {
    const double value = At(k, col);
    if (!(value >= least && value <= most) || value != std::floor(value)) RefuseDamagedMat();
    return static_cast<std::uint64_t>(value);
  }

 private:
  std::uint64_t rows_;
  const ElementBlock& elements_;
};

Matrix ReadEntries(const EntryTable& table, std::size_t held, const Memory& memory) {
  constexpr double kMostCounted = 1ULL << 52;
  const std::uint64_t entries = table.Entries();
  const std::uint64_t rows = table.CountAt(entries, kRow, 0, kMostCounted);
  const std::uint64_t cols = table.CountAt(entries, kCol, 0, kMostCounted);
  CheckShape(rows, cols, held, Storage::kUnfolds, memory);
  Matrix values(static_cast<int>(rows), static_cast<int>(cols));
  for (std::uint64_t k = 0; k < entries; ++k) {
    const std::uint64_t row = table.CountAt(k, kRow, 1, static_cast<double>(rows));
    const std::uint64_t col = table.CountAt(k, kCol, 1, static_cast<double>(cols));
    const double value = table.At(k, kValue);
    if (!std::isfinite(value)) RefuseElement(row, col, "expected a finite number.");
    values(static_cast<int>(row), static_cast<int>(col)) = value;
  }
  return values;
}

}  // namespace

bool Mat4Variables::Next() {
  while (const auto start = Mat4StartOf(rest_)) {
    elements_ = {.bytes = rest_.data() + start->elements,
                 .kind = start->kind,
                 .order = ElementOrder::kByColumns,
                 .swapped = start->bigEndian != (std::endian::native == std::endian::big)};
    rest_.remove_prefix(std::min<std::uint64_t>(start->end, rest_.size()));
    constexpr std::uint32_t kClasses[] = {kMatDouble, kMatText, kMatSparse};
    variable_ = {.name = std::string(start->name.substr(0, start->name.find('\0'))),
                 .matClass = kClasses[static_cast<std::size_t>(start->form)],
                 .complex = start->complex,
                 .shape = {start->rows, start->cols},
                 .isTable = start->form == Mat4Form::kSparse};
    if (variable_.isTable && IsComplexTable(variable_)) variable_.complex = true;
    if (!variable_.name.empty()) return true;
  }
  return false;
}

Matrix ReadMat4Matrix(const Mat4Variables& variables, std::size_t held, const Memory& memory) {
  const MatVariable& variable = variables.Variable();
  const std::uint64_t rows = variable.shape[0];
  const std::uint64_t cols = variable.shape[1];
  CheckShape(rows, cols, held, Storage::kUnfolds, memory);
  if (variable.isTable)
    return ReadEntries(EntryTable(variable, variables.Elements()), held, memory);
  Matrix values = Matrix::Unset(static_cast<int>(rows), static_cast<int>(cols));
  ConvertElements(variables.Elements(), 0, cols, values);
  return values;
}

}  // namespace qmx
