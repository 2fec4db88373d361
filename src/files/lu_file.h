// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "files/matrix_file.h"
#include "workspace/workspace.h"

namespace qmx {

/// A record of five counts (rows and columns of L, rows and columns of U, exchange records), then
/// the elements of L, of U and the exchange records, one print record each. Factors without
/// exchanges have a count of 0.
void WriteLUFactors(RecordWriter& writer, const StoredFactors& factors);

/// Reads what WriteLUFactors writes. Where U is not square, only the counts are read: true is
/// returned and the matrices stay empty. Otherwise the factors must be such that a system can be
/// solved with them: L as large as U, no exchange records or one for each row, each naming a row.
/// Without exchange records `exchanges` names the rows in their own order.
bool ReadLUFactors(FieldScanner& scanner, StoredFactors& factors);

std::string LUFile(const StoredFactors& factors, Progress& progress = NoProgress());
/// As ReadLUFactors, for a file that holds nothing else. Factors of order 0 are refused.
FileReading<StoredFactors> ReadLUFile(std::string_view bytes, const Memory& memory = SystemMemory(),
                                      Progress& progress = NoProgress());

}  // namespace qmx
