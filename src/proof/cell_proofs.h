// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string_view>

#include "proof/proof.h"

namespace qmx {

/// What has been proved about the numbers of one matrix, for whoever shows them. It does not change
/// any more and may be read by several threads.
struct CellProofs {
  Matrix computed;    ///< What the proofs are about.
  ResultProof proof;  ///< Without elements where nothing is known.
  /// The same of the numbers that stand in the header row, one for each column; null for none.
  std::shared_ptr<const CellProofs> header;

  /// What is known of element (row, col), from 1; row 0 is the header row. Null where that is
  /// nothing.
  const ElementProof* Find(int row, int col) const;
  /// How many digits hold of the text that shows an element, as HeldDigits tells it.
  int Held(int row, int col, std::string_view shown, int most) const;
};

/// The least number of digits of the texts that wide and narrow grids show, in the columns of which
/// `columns` says true, or in all of them where it is empty.
void FindFewest(const std::vector<bool>& columns, CellProofs& cells);

}  // namespace qmx
