// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "workspace/controls.h"

namespace qmx {

/// The fixed numbers of the Workspace's matrices. They index the main window's control arrays and
/// order files and reports.
enum Slot : int {
  kSlotA,
  kSlotB,
  kSlotSum,
  kSlotDifference,
  kSlotProduct,
  kSlotL,
  kSlotU,
  kSlotQ,
  kSlotR,
  kSlotInverse,
  kSlotAdjoint,
  kSlotTranspose,
  kSlotEigenvectors,
  kSlotEigenvalues,
  kSlotSolution,
  kSlotCreated,
  kSlotPermutation,
  kSlotExchanges,
  kSlotSystem,
};
inline constexpr int kSlotCount = 19;

/// All slots in their order, to loop over.
inline constexpr auto kAllSlots = [] {
  std::array<Slot, kSlotCount> all{};
  for (int k = 0; k < kSlotCount; ++k) all[k] = static_cast<Slot>(k);
  return all;
}();

/// How a slot's window works.
enum class WindowKind {
  kEditor,        ///< Cells are edited in place.
  kViewer,        ///< Cells can be inspected; the width can be toggled.
  kColumnViewer,  ///< One column of labelled values without a header row; the width can be toggled.
  kPlainViewer,   ///< Only shown and closed.
};

/// All that is fixed about one matrix of the Workspace.
struct SlotInfo {
  Slot slot{};
  WindowKind kind{};
  std::string_view name;     ///< What the names of its window, its grid and its labels end with.
  std::string_view title;    ///< Caption of its frame on the main window.
  std::string_view caption;  ///< Caption of its window.
  std::string_view heading;  ///< First line of its section in a report.
  std::string_view prefix;   ///< What stands before the indices of an element, in reports and in an
                             ///< editor's tool tips.
  bool filedAsVector = false;  ///< Files hold it with a column count of 0.
  Control rows{};              ///< Where the main window shows its dimensions: fields or labels.
  Control cols{};
  std::string_view window{};  ///< Name of its window.
  std::string_view grid{};    ///< Name of the grid in its window.

  constexpr bool IsEditor() const { return kind == WindowKind::kEditor; }
};

namespace slot_table {

constexpr SlotInfo Editor(Slot slot, std::string_view name, std::string_view title,
                          std::string_view caption, std::string_view heading,
                          std::string_view prefix, const Control& rows, const Control& cols) {
  return {slot, WindowKind::kEditor, name, title, caption, heading, prefix, false, rows, cols};
}
constexpr SlotInfo Viewer(Slot slot, std::string_view name, std::string_view title,
                          std::string_view heading, std::string_view prefix,
                          std::string_view caption = {}) {
  return {slot,  WindowKind::kViewer, name, title, caption.empty() ? title : caption, heading,
          prefix};
}
constexpr SlotInfo Column(Slot slot, WindowKind kind, std::string_view name, std::string_view title,
                          std::string_view heading, std::string_view prefix,
                          std::string_view caption) {
  return {slot, kind, name, title, caption, heading, prefix, true};
}

// clang-format off
inline constexpr std::array<SlotInfo, kSlotCount> kRows{
    Editor(kSlotA, "A", "Matrix A", "Matrix A", "MATRIX [A]:", "A(", txtRowsA, txtColsA),
    Editor(kSlotB, "B", "Matrix B", "Matrix B", "MATRIX [B]:", "B(", txtRowsB, txtColsB),
    Viewer(kSlotSum, "Sum", "A + B", "SUM [A]+[B]:", "Sum("),
    Viewer(kSlotDifference, "Difference", "A - B", "DIFFERENCE [A]-[B]:", "Difference("),
    Viewer(kSlotProduct, "Product", "A * B", "PRODUCT [A][B]:", "Product("),
    Viewer(kSlotL, "Lfactor", "L", "LOWER TRIANGULAR FACTOR (L):", "L("),
    Viewer(kSlotU, "Ufactor", "U", "UPPER TRIANGULAR FACTOR (U):", "U("),
    Viewer(kSlotQ, "Qfactor", "Q", "FACTOR WITH ORTHONORMAL COLUMNS (Q):", "Q("),
    Viewer(kSlotR, "Rfactor", "R", "UPPER TRIANGULAR FACTOR (R):", "R("),
    Viewer(kSlotInverse, "Inverse", "Inverse of A", "INVERSE OF A", "Inverse("),
    Viewer(kSlotAdjoint, "Adjoint", "Adjoint of A", "ADJOINT OF A:", "Adjoint("),
    Viewer(kSlotTranspose, "Transpose", "Transpose of A", "TRANSPOSE OF A:", "Transpose("),
    Viewer(kSlotEigenvectors, "Eigenvectors", "Eigenvectors of A", "UNIT EIGENVECTORS FOUND:", "EVC(",
           "Eigenvectors found"),
    Column(kSlotEigenvalues, WindowKind::kColumnViewer, "Eigenvalues", "Eigenvalues of A",
           "EIGENVALUES FOUND:", "", "Eigenvalues found"),
    Column(kSlotSolution, WindowKind::kColumnViewer, "Solution", "Solution", "SOLUTION:", "x(",
           "System solution"),
    Editor(kSlotCreated, "Created", "Special matrix", "Created matrix", "SPECIAL CREATED MATRIX:",
           "Created(", txtRowsCreated, txtColsCreated),
    Viewer(kSlotPermutation, "Permutation", "Permutation", "PERMUTATION MATRIX:", "Permutation(",
           "Permutation matrix"),
    Column(kSlotExchanges, WindowKind::kPlainViewer, "Exchanges", "Map of exchanges",
           "MAP OF ROW EXCHANGES:", "", "Map of exchanges"),
    Editor(kSlotSystem, "System", "System of linear equations", "System of linear equations",
           "SYSTEM OF EQUATIONS:", "System(", txtEquations, txtUnknowns),
};
// clang-format on

/// The names that are made of a slot's own: "frmSum", "MSFlexGridSum", "lblRowsSum", "lblColsSum".
class Joined {
 public:
  constexpr Joined() = default;
  constexpr Joined(std::string_view stem, std::string_view name) {
    for (const char c : stem) text_[size_++] = c;
    for (const char c : name) text_[size_++] = c;
  }
  constexpr std::string_view Text() const { return {text_.data(), size_}; }

 private:
  std::array<char, 24> text_{};
  std::size_t size_ = 0;
};

inline constexpr std::array<std::string_view, 4> kStems{"frm", "MSFlexGrid", "lblRows", "lblCols"};
inline constexpr auto kNames = [] {
  std::array<std::array<Joined, kStems.size()>, kSlotCount> names{};
  for (int k = 0; k < kSlotCount; ++k) {
    for (std::size_t i = 0; i < kStems.size(); ++i) names[k][i] = Joined(kStems[i], kRows[k].name);
  }
  return names;
}();

}  // namespace slot_table

inline constexpr auto kSlots = [] {
  auto slots = slot_table::kRows;
  for (SlotInfo& info : slots) {
    const auto& names = slot_table::kNames[info.slot];
    info.window = names[0].Text();
    info.grid = names[1].Text();
    if (info.IsEditor()) continue;
    info.rows = {names[2].Text()};
    info.cols = {names[3].Text()};
  }
  return slots;
}();

static_assert([] {
  for (int k = 0; k < kSlotCount; ++k) {
    if (kSlots[k].slot != k) return false;
  }
  return true;
}());

constexpr const SlotInfo& InfoOf(Slot slot) { return kSlots[slot]; }

/// True for the slots whose frame is always on the main window; the others appear with their
/// result.
constexpr bool HasPermanentFrame(Slot slot) { return InfoOf(slot).IsEditor(); }

}  // namespace qmx
