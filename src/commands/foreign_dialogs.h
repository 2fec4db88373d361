// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "exchange/foreign_file.h"
#include "workspace/slot_table.h"
#include "workspace/system_kind.h"

namespace qmx {

/// Where the right-hand sides of a system stand that is read from a table.
enum class RightSide {
  kLastColumn,
  kColumn,  ///< In a column of the user's choice.
  kNone,    ///< Nowhere: they are to be typed, and begin as zeros.
};

/// A file that is to be imported: what it was recognised as, and what the user makes of it.
struct ImportQuestion {
  std::string fileName;    ///< In the system's bytes.
  Slot target = kSlotA;    ///< What the matrix is for.
  std::string_view bytes;  ///< Of the file, for a preview of a table.
  /// The first rows of a variable, which may be read for that; never null.
  std::function<const ForeignOutcome<Matrix>&(std::size_t variable)> look;
  /// Why what was answered last could not be done; empty at first.
  std::string problem;
  /// Only the right-hand sides are taken: stored factors are the coefficients of the System.
  bool rightSideOnly = false;

  // What the user may change.
  ForeignContents contents;  ///< The settings of a text table.
  std::size_t variable = 0;
  RightSide rightSide = RightSide::kLastColumn;  ///< For the System.
  int rightColumn = 1;                           ///< For RightSide::kColumn, from 1.
};

/// What the commands for the files of other programs ask the user.
class ForeignDialogs {
 public:
  ForeignDialogs() = default;
  ForeignDialogs(const ForeignDialogs&) = delete;
  ForeignDialogs& operator=(const ForeignDialogs&) = delete;
  virtual ~ForeignDialogs() = default;

  /// Shows how a file is understood and lets that be changed. False when the user cancels.
  virtual bool AskImport(ImportQuestion& question) = 0;
  /// Lets the form of a file be chosen, starting from a proposal. False when the user cancels.
  virtual bool AskExport(Slot slot, ForeignChoice& choice) = 0;
  /// Which column of B, of so many, is the right-hand side; nothing when the user cancels.
  virtual std::optional<int> AskRightSide(int columns) = 0;
};

}  // namespace qmx
