// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "derivation/elimination_teller.h"
#include "derivation/plain_gauss_jordan.h"

namespace qmx {

/// Tells the exchange steps on A as what they do to [A | I]: columns that have had their pivot hold
/// columns of the right half; the rest of it has not been touched yet.
class JordanTeller {
 public:
  JordanTeller(Scribe& scribe, const plain::Jordan<Traced>& jordan, bool exchangesRows);

  void OnPivot(Elements<Traced>& W, int column, int row);
  void OnNoPivot(Elements<Traced>& W, int column);
  void OnExchange(int one, int two);
  void OnSubtract(int target, const Traced& factor, int source);
  void OnDivide(int target, const Traced& factor);
  void OnColumnDone(int column);

  /// [A | I] as it has become.
  ShownMatrix Now() const;
  /// Where Now is not too large.
  bool IsShown() const { return n_ <= kMostShownRows; }

 private:
  bool BeginColumn(int column);
  ShownNumber Left(int row, int col) const;
  ShownNumber Right(int row, int col) const;
  /// The row of A that row `row` was.
  int OriginOf(int row) const;

  Scribe& scribe_;
  const plain::Jordan<Traced>& jordan_;
  bool exchangesRows_;
  int n_;
  StepChoice choice_;
  bool isTold_ = true;
  int pivotRow_ = 0;
  int toldRows_ = 0;
  std::vector<int> changed_;   ///< Rows that did not stay as they were.
  std::vector<int> rowOf_;     ///< Of each column done, from index 1, its pivot row; else 0.
  std::vector<int> columnOf_;  ///< Of each row of A, from index 1, the column that it gave; else 0.
};

}  // namespace qmx
