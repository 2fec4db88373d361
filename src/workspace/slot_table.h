#pragma once

#include <array>
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

/// How a slot's window works.
enum class WindowKind {
  kEditor,        ///< Cells are edited in place.
  kViewer,        ///< Cells can be inspected; the width can be toggled.
  kColumnViewer,  ///< One column of labelled values without a header row; the width can be toggled.
  kPlainViewer,   ///< Only shown and closed.
};

/// All that is fixed about one matrix of the Workspace.
struct SlotInfo {
  int slot;
  std::string_view title;    ///< Caption of its frame on the main window.
  std::string_view window;   ///< Name of its window.
  std::string_view caption;  ///< Caption of its window.
  std::string_view grid;     ///< Name of the grid in its window.
  WindowKind kind;
  Control rows;  ///< Where the main window shows its dimensions: fields or labels.
  Control cols;
  std::string_view heading;  ///< First line of its section in a report.
  std::string_view prefix;   ///< What stands before the indices of an element, in reports and in an
                             ///< editor's tool tips.
  bool filedAsVector;        ///< Files hold it with a column count of 0.

  constexpr bool IsEditor() const { return kind == WindowKind::kEditor; }
};

inline constexpr std::array<SlotInfo, kSlotCount> kSlots{{
    {kSlotA, "Matrix A", "frmA", "Matrix A", "MSFlexGridA", WindowKind::kEditor, txtRowsA, txtColsA,
     "MATRIX [A]:", "A(", false},
    {kSlotB, "Matrix B", "frmB", "Matrix B", "MSFlexGridB", WindowKind::kEditor, txtRowsB, txtColsB,
     "MATRIX [B]:", "B(", false},
    {kSlotSum,
     "A + B",
     "frmSum",
     "A + B",
     "MSFlexGridSum",
     WindowKind::kViewer,
     {"lblRowsSum"},
     {"lblColsSum"},
     "SUM [A]+[B]:",
     "Sum(",
     false},
    {kSlotDifference,
     "A - B",
     "frmDifference",
     "A - B",
     "MSFlexGridDifference",
     WindowKind::kViewer,
     {"lblRowsDifference"},
     {"lblColsDifference"},
     "DIFFERENCE [A]-[B]:",
     "Difference(",
     false},
    {kSlotProduct,
     "A * B",
     "frmProduct",
     "A * B",
     "MSFlexGridProduct",
     WindowKind::kViewer,
     {"lblRowsProduct"},
     {"lblColsProduct"},
     "PRODUCT [A][B]:",
     "Product(",
     false},
    {kSlotL,
     "L",
     "frmLfactor",
     "L",
     "MSFlexGridLfactor",
     WindowKind::kViewer,
     {"lblRowsLfactor"},
     {"lblColsLfactor"},
     "LOWER TRIANGULAR FACTOR (L):",
     "L(",
     false},
    {kSlotU,
     "U",
     "frmUfactor",
     "U",
     "MSFlexGridUfactor",
     WindowKind::kViewer,
     {"lblRowsUfactor"},
     {"lblColsUfactor"},
     "UPPER TRIANGULAR FACTOR (U):",
     "U(",
     false},
    {kSlotQ,
     "Q",
     "frmQfactor",
     "Q",
     "MSFlexGridQfactor",
     WindowKind::kViewer,
     {"lblRowsQfactor"},
     {"lblColsQfactor"},
     "FACTOR WITH ORTHONORMAL COLUMNS (Q):",
     "Q(",
     false},
    {kSlotR,
     "R",
     "frmRfactor",
     "R",
     "MSFlexGridRfactor",
     WindowKind::kViewer,
     {"lblRowsRfactor"},
     {"lblColsRfactor"},
     "UPPER TRIANGULAR FACTOR (R):",
     "R(",
     false},
    {kSlotInverse,
     "Inverse of A",
     "frmInverse",
     "Inverse of A",
     "MSFlexGridInverse",
     WindowKind::kViewer,
     {"lblRowsInverse"},
     {"lblColsInverse"},
     "INVERSE OF A",
     "Inverse(",
     false},
    {kSlotAdjoint,
     "Adjoint of A",
     "frmAdjoint",
     "Adjoint of A",
     "MSFlexGridAdjoint",
     WindowKind::kViewer,
     {"lblRowsAdjoint"},
     {"lblColsAdjoint"},
     "ADJOINT OF A:",
     "Adjoint(",
     false},
    {kSlotTranspose,
     "Transpose of A",
     "frmTranspose",
     "Transpose of A",
     "MSFlexGridTranspose",
     WindowKind::kViewer,
     {"lblRowsTranspose"},
     {"lblColsTranspose"},
     "TRANSPOSE OF A:",
     "Transpose(",
     false},
    {kSlotEigenvectors,
     "Eigenvectors of A",
     "frmEigenvectors",
     "Eigenvectors found",
     "MSFlexGridEigenvectors",
     WindowKind::kViewer,
     {"lblRowsEigenvectors"},
     {"lblColsEigenvectors"},
     "UNIT EIGENVECTORS FOUND:",
     "EVC(",
     false},
    {kSlotEigenvalues,
     "Eigenvalues of A",
     "frmEigenvalues",
     "Eigenvalues found",
     "MSFlexGridEigenvalues",
     WindowKind::kColumnViewer,
     {"lblRowsEigenvalues"},
     {"lblColsEigenvalues"},
     "EIGENVALUES FOUND:",
     "",
     true},
    {kSlotSolution,
     "Solution",
     "frmSolution",
     "System solution",
     "MSFlexGridSolution",
     WindowKind::kColumnViewer,
     {"lblRowsSolution"},
     {"lblColsSolution"},
     "SOLUTION:",
     "x(",
     true},
    {kSlotCreated, "Special matrix", "frmCreated", "Created matrix", "MSFlexGridCreated",
     WindowKind::kEditor, txtRowsCreated, txtColsCreated, "SPECIAL CREATED MATRIX:", "Created(",
     false},
    {kSlotPermutation,
     "Permutation",
     "frmPermutation",
     "Permutation matrix",
     "MSFlexGridPermutation",
     WindowKind::kViewer,
     {"lblRowsPermutation"},
     {"lblColsPermutation"},
     "PERMUTATION MATRIX:",
     "Permutation(",
     false},
    {kSlotExchanges,
     "Map of exchanges",
     "frmExchanges",
     "Map of exchanges",
     "MSFlexGridExchanges",
     WindowKind::kPlainViewer,
     {"lblRowsExchanges"},
     {"lblColsExchanges"},
     "MAP OF ROW EXCHANGES:",
     "",
     true},
    {kSlotSystem, "System of linear equations", "frmSystem", "System of linear equations",
     "MSFlexGridSystem", WindowKind::kEditor, txtEquations, txtUnknowns,
     "SYSTEM OF EQUATIONS:", "System(", false},
}};

consteval bool SlotsAreInOrder() {
  for (int k = 0; k < kSlotCount; ++k) {
    if (kSlots[k].slot != k) return false;
  }
  return true;
}
static_assert(kSlots.size() == kSlotCount && SlotsAreInOrder());

/// The facts of slot k, 0 <= k < kSlotCount.
constexpr const SlotInfo& InfoOf(int slot) { return kSlots[slot]; }

/// True for the slots whose frame is always on the main window; the others appear with their
/// result.
constexpr bool HasPermanentFrame(int slot) { return InfoOf(slot).IsEditor(); }

}  // namespace qmx
