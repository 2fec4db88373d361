// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/matrix.h"
#include "base/memory.h"
#include "exchange/foreign_outcome.h"
#include "exchange/foreign_variable.h"

namespace qmx {

// The text files of GNU Octave ("save -text"), which hold variables one after the other, each with
// a name and a type.

/// True for a text that begins with the lines of such a file.
bool IsOctaveText(std::string_view bytes);

/// The variables of a file in their order. Variables within cells and structures are not listed.
/// Refuses a text that is no such file and one with more than 10,000 variables.
ForeignOutcome<std::vector<ForeignVariable>> ListOctaveText(std::string_view bytes);

/// Reads variable `index` of the list, counted from 0: a scalar or a matrix of numbers of double or
/// single precision, integers or truth values, full, sparse, diagonal or a permutation, or a range,
/// whose elements are computed as Octave does. Refused, with line and word where there is one:
/// everything else (complex numbers, texts, cells, more than two dimensions), values that are no
/// finite number, integers that a double cannot hold exactly, and elements that are missing or left
/// over.
ForeignOutcome<Matrix> ReadOctaveText(std::string_view bytes, std::size_t index,
                                      const Memory& memory = SystemMemory());

/// A file with one variable of type matrix, exactly. The name must be fit for a variable (see
/// VariableName). Refuses an element that is no finite number.
ForeignOutcome<std::string> WriteOctaveText(const Matrix& values, const std::string& name);

}  // namespace qmx
