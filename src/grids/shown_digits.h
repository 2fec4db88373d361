// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <memory>

#include "proof/cell_proofs.h"

namespace qmx {

/// What the window of a matrix shows of the digits that hold.
struct ShownDigits {
  QString line;                             ///< Below the grid; nothing stands there where empty.
  bool isWatched = false;                   ///< Digits that are not proved are grey.
  std::shared_ptr<const CellProofs> cells;  ///< Null where nothing is known.
  bool offersCheck = false;                 ///< The user may ask for a check.
  bool isChecking = false;                  ///< And may stop the one that was asked for.

  bool operator==(const ShownDigits&) const = default;
};

}  // namespace qmx
