// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "base/matrix.h"
#include "base/memory.h"
#include "exchange/foreign_outcome.h"

namespace qmx {

// The files of numpy.save: a magic word, a version, a header of text (a Python dictionary) and the
// elements as they lie in memory. The format is described in the documentation of numpy.lib.format.

/// True for bytes that begin as such a file does.
bool IsNpy(std::string_view bytes);

/// What the header of a file says, for a list of what is inside.
struct NpyHeader {
  std::string kind;   ///< "float64", "complex128", "text"; as far as it is known.
  std::string shape;  ///< "2 x 3", "5", "2 x 3 x 4"; "scalar" for none.
};
ForeignOutcome<NpyHeader> ReadNpyHeader(std::string_view bytes);

/// Reads an array of versions 1 to 3: float32 and float64, signed and unsigned integers of 8 to 64
/// bits, and bool (1 and 0), in both byte orders, by rows or by columns. No dimension gives a 1 x 1
/// matrix, one a column. Refused: complex numbers and everything else, more than two dimensions,
/// values that are no finite number and integers that a double cannot hold exactly (these two with
/// row and column), and a file that is shorter or longer than its shape asks for.
ForeignOutcome<Matrix> ReadNpy(std::string_view bytes, const Memory& memory = SystemMemory());

/// A matrix as numpy.save writes an array of float64 by rows, of version 1. Refuses an element that
/// is no finite number.
ForeignOutcome<std::string> WriteNpy(const Matrix& values);

}  // namespace qmx
