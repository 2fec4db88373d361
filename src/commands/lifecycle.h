// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "workspace/context.h"

namespace qmx {

// The commands that bring the operands into being and take them away. `operand` is kSlotA or
// kSlotB.

/// Creates A or B as zeros from its dimension fields; its grid stays empty until something is
/// written.
void CreateOperand(Context& context, Slot operand);
/// Sets all elements of A, B or the System to zero. No result is touched.
void ClearOperand(Context& context, Slot slot);
/// Erases A or B and all results associated with it, if the user confirms.
void ResetOperand(Context& context, Slot operand);
/// Copies matrix `from` into A or B. No result is touched.
void CopyInto(Context& context, Slot operand, Slot from);
/// Exchanges A and B.
void ExchangeAandB(Context& context);

/// Creates the System as zeros from its fields and the selected way of solving.
void CreateSystem(Context& context);
/// Erases the System and its Solution, without a question, and goes back to the one-shot solution.
void ResetSystemCommand(Context& context);

/// A count of rows and one of columns, as fields hold them.
struct Dimensions {
  int rows;
  int cols;
};

/// Reads a dimension field. Nothing, after a message that names the field and what it holds, where
/// that is not a count.
std::optional<int> ReadDimension(Context& context, const Control& field, int least = 1);
/// Reads two of them; nothing, after a message, also where the machine cannot hold such a matrix.
std::optional<Dimensions> ReadDimensions(Context& context, const Control& rowsField,
                                         const Control& colsField);

}  // namespace qmx
