// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "workspace/result_table.h"

namespace qmx {

/// What is kept of a computed result beside the operands, so that later it can be told what it was
/// the answer to. Matrices share their elements. Two results are the same one if and only if they
/// have the same Computation: undoing and redoing bring it back with its result.
struct Computation {
  std::uint64_t serial = 0;  ///< Grows from one to the next.
  /// The result's matrices in their order, as they were published.
  std::vector<Matrix> computed;
  double number = 0;
  std::string verdict;
  /// The counts by which A and B were read; they may be less than what the arrays hold.
  int aRows = 0;
  int aCols = 0;
  int bRows = 0;
  int bCols = 0;
  Manner manner;
  /// Of L and U: element k is the row of A that became row k; empty where none was exchanged.
  Matrix exchanges;
  /// Of a solution: the way of solving, and the factors that there were.
  std::int16_t systemMethod = kSystemOneShot;
  StoredFactors factors;
  /// Of eigenvectors: their eigenvalues, and the columns that are on show.
  Matrix eigenvalues;
  std::vector<bool> columns;
  /// Of A, once it was multiplied or shifted by a number: what it was before, the number, and how
  /// often A had changed then.
  enum class Change { kNone, kScaled, kShifted };
  Change change = Change::kNone;
  Matrix before;
  double scalar = 0;
  std::uint32_t revision = 0;
};

/// Keeps what belongs to a result that has just been published; nothing for what is no computed
/// result.
void KeepComputation(Workspace& workspace, Result result);
/// A, which was `before`, has been multiplied or shifted by a number.
void KeepChangeOfA(Workspace& workspace, Computation::Change change, Matrix before, double scalar);

}  // namespace qmx
