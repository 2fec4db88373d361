// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

#include "base/matrix.h"
#include "base/memory.h"
#include "exchange/foreign_outcome.h"
#include "exchange/foreign_variable.h"

namespace qmx {

// MAT files of versions 4 to 7 without matio, in this process and in any number of threads; it is
// how the program for Windows reads them. What becomes of a file is the same as with matio (see
// mat_file.h), but for
// - version 7.3, which is refused with what to do about it;
// - a sparse matrix of version 4 that is empty or whose entries have no order, which matio refuses
//   or confuses;
// - damages over which matio makes up values, which are refused;
// - a variable whose start is damaged: it is listed as such, where matio's list ends.
//
// Beside the bytes at hand it takes the memory of the matrix and that of a megabyte or a column of
// the file's numbers: what is compressed is unpacked piece by piece.

/// See ListMat.
ForeignOutcome<std::vector<ForeignVariable>> ListMatDirectly(std::string_view bytes);

/// See ReadMat.
ForeignOutcome<Matrix> ReadMatDirectly(std::string_view bytes, std::size_t index,
                                       const Memory& memory = SystemMemory());

}  // namespace qmx
