// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "algorithms/eigenvalues.h"
#include "base/matrix.h"
#include "workspace/slot_table.h"
#include "workspace/system_kind.h"

namespace qmx {

/// One matrix of the Workspace. The counts are kept beside the array: a refused task may leave them
/// overwritten while the array of the last result stays. Whatever reads the matrix goes by the
/// array's own extent.
struct SlotData {
  SlotData() = default;
  SlotData(Matrix matrix, int rowCount, int colCount)
      : array(std::move(matrix)), rows(rowCount), cols(colCount) {}
  /// A copy shares the elements: whoever writes single ones has to make them its own.
  SlotData(const SlotData& other) : SlotData(other.array.Shared(), other.rows, other.cols) {}
  SlotData(SlotData&&) noexcept = default;
  SlotData& operator=(SlotData other) noexcept {
    array.Swap(other.array);
    rows = other.rows;
    cols = other.cols;
    return *this;
  }
  ~SlotData() = default;

  Matrix array;
  int rows = 0;
  int cols = 0;
};

/// The factors that systems are solved with: P·A = L·U. Independent of the L and U results.
struct StoredFactors {
  StoredFactors() = default;
  /// A copy shares the elements.
  StoredFactors(const StoredFactors& other)
      : L(other.L.Shared()),
        U(other.U.Shared()),
        exchanges(other.exchanges.Shared()),
        lRows(other.lRows),
        lCols(other.lCols),
        uRows(other.uRows),
        uCols(other.uCols),
        exchangeRows(other.exchangeRows),
        exchangeCols(other.exchangeCols) {}
  StoredFactors(StoredFactors&&) noexcept = default;
  StoredFactors& operator=(StoredFactors&&) noexcept = default;
  StoredFactors& operator=(const StoredFactors& other) { return *this = StoredFactors(other); }
  ~StoredFactors() = default;

  Matrix L;          ///< n x n, unit lower triangular.
  Matrix U;          ///< n x n, upper triangular.
  Matrix exchanges;  ///< n x 1: element k is the row of A that became row k of U.
  int lRows = 0;
  int lCols = 0;
  int uRows = 0;
  int uCols = 0;
  /// The counts of Exchanges when the factors were stored: 0 rows after a factorization without
  /// exchanges, which means the identity.
  int exchangeRows = 0;
  int exchangeCols = 0;
};

/// What the eigen task keeps between runs, beside the matrices Eigenvalues and Eigenvectors.
struct EigenState {
  std::vector<double>
      EigenOrigin;  ///< Per eigenvalue: the diagonal position in A (from 1) where it was found.
  std::vector<double> VectorStatus;  ///< Per eigenvalue: 0 converged, 1 not converged, -1 singular.
  int EigenCount = 0;                ///< Number of eigenvalues found.
  int ConvergedCount = 0;            ///< Number of eigenvectors found.
  std::int32_t ShiftIndex =
      0;  ///< Active index of the smallest diagonal change; carried from run to run.
};

/// How often the operands have changed.
struct Revisions {
  std::uint32_t a = 0;
  std::uint32_t b = 0;
  std::uint32_t system = 0;
};

/// How a task went about its result, where there is more than one way. Files do not keep it.
struct Manner {
  bool isKnown = false;
  bool pivoting = true;         ///< Of L and U.
  bool byCofactors = true;      ///< Of the adjoint; else by the inverse.
  EigenParameters eigen;        ///< Of the eigenvalues and their vectors,
  std::int32_t shiftIndex = 0;  ///< with the index that was carried into the iteration.
};

struct Computation;

/// The number of results that the table of results describes.
inline constexpr int kResultCount = 20;

/// The single store that every command and algorithm reads and writes: operands, results, scalars
/// and flags. All matrices start absent.
struct Workspace {
  std::array<SlotData, kSlotCount> slots;

  SlotData& At(Slot slot) { return slots[slot]; }
  const SlotData& At(Slot slot) const { return slots[slot]; }

  // Which results there are; the table of results tells what belongs to each.
  bool ACreated = false;
  bool BCreated = false;
  bool SumComputed = false;
  bool DifferenceComputed = false;
  bool ProductComputed = false;
  bool InverseComputed = false;
  bool AdjointComputed = false;
  bool TransposeComputed = false;
  bool DeterminantComputed = false;
  bool TraceComputed = false;
  bool LUComputed = false;
  bool QRComputed = false;
  bool DefinitenessComputed = false;
  bool SymmetryComputed = false;
  bool EigenvaluesComputed = false;
  bool EigenvectorsComputed = false;
  bool SolutionComputed = false;
  bool ExchangesPresent = false;
  bool CreatedPresent = false;
  bool SystemPresent = false;

  bool AIsSymmetric = false;
  bool StoredFactorsValid = false;

  double determinant = 0;
  double trace = 0;
  std::string definitenessText;
  std::string symmetryText;

  StoredFactors storedFactors;
  EigenState eigen;
  Manner manner;  ///< Of the task that runs, or ran last.

  Revisions revisions;
  std::array<Revisions, kResultCount> computedFrom;  ///< What they were when a result was computed.
  /// What the command that runs, or ran last, has computed.
  std::array<bool, kResultCount> computedNow{};
  /// What a result was the answer to; null for what was not computed.
  std::array<std::shared_ptr<const Computation>, kResultCount> computations;

  std::int16_t SystemMethod =
      kSystemOneShot;          ///< Index of the selected way of solving, a SystemKind.
  std::int32_t TaskIndex = 0;  ///< Index of the task button pressed last.
  std::string
      currentFileName;  ///< The name that a file dialog, the command line or a drop gave last.

  Workspace() { At(kSlotExchanges).cols = 1; }

  SlotData& A() { return At(kSlotA); }
  SlotData& B() { return At(kSlotB); }
  SlotData& System() { return At(kSlotSystem); }
};

}  // namespace qmx
