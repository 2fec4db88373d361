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

// MAT files: read by way of the library matio, of versions 4 to 7.3, and on Windows, where matio
// and the means to keep it apart are not to be had, by a reader of our own, of versions 4 to 7 (see
// mat_direct.h). What both read and refuse, they do alike. They are written without a library.
//
// matio reads files by their names, and no reader of such files is safe from every broken one. So
// the bytes are read in a process of its own (see Apart), which has them in a file that lies in
// memory (see MemoryFile); whatever becomes of that process, this one goes on. Only for version 7.3
// has the file a name, while it is opened. Reading may then be done in any thread, but by one at a
// time; it takes at most half a minute of processor time.

/// True for bytes that begin as a MAT file of any version does.
bool IsMat(std::string_view bytes);

/// The variables of a file in their order. What cannot be read says why in its problem. Refuses a
/// damaged or cut file, and one without variables or with more than 10,000.
ForeignOutcome<std::vector<ForeignVariable>> ListMat(std::string_view bytes);

/// Reads variable `index` of the list, counted from 0: a matrix of numbers of double or single
/// precision, of integers or of truth values, full or sparse (elements that are not stored are 0).
/// Refused: everything else (complex numbers, texts, cells, structures, more than two dimensions),
/// values that are no finite number and integers that a double cannot hold exactly (these with row
/// and column), and a damaged or cut file.
ForeignOutcome<Matrix> ReadMat(std::string_view bytes, std::size_t index,
                               const Memory& memory = SystemMemory());

/// A file of version 5 (which 6, 7 and later read), with one variable of double precision, not
/// compressed. The name must be fit for a variable (see VariableName). Refuses an element that is
/// no finite number.
ForeignOutcome<std::string> WriteMat(const Matrix& values, const std::string& name);

}  // namespace qmx
