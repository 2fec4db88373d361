// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "workspace/context.h"

namespace qmx {

/// Shows matrices as tables on pages, and prints them.
class PrintPreview {
 public:
  PrintPreview() = default;
  PrintPreview(const PrintPreview&) = delete;
  PrintPreview& operator=(const PrintPreview&) = delete;
  virtual ~PrintPreview() = default;

  /// Shows the table of `first`; the user may turn to another one of the slots. False where a table
  /// was to be printed and the printer failed.
  virtual bool Show(const Workspace& workspace, const std::vector<Slot>& slots, Slot first) = 0;
};

/// True if a slot has a matrix with elements on show.
bool HasMatrix(const Workspace& workspace, Slot slot);

/// Shows the table of a matrix as it will be printed: of the wanted slot where that has one, else
/// of the first one that has.
void PrintTable(Context& context, PrintPreview& preview, std::optional<Slot> wanted);

}  // namespace qmx
