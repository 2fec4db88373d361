// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "base/matrix.h"
#include "files/field_scanner.h"
#include "files/record_writer.h"
#include "workspace/slot_table.h"

namespace qmx {

/// One matrix as a file holds it. The counts are those of the file: a vector has a column count of
/// 0 and an array of one column.
struct MatrixSection {
  Matrix array;
  int rows = 0;
  int cols = 0;
};

/// What came of reading a whole file: its content, or a problem in words for the user.
template <typename Content>
struct FileReading {
  Content content;
  std::string problem;  ///< Empty where the content can be used.
  bool Ok() const { return problem.empty(); }
};

/// A record "rows,cols" and one print record per element, row by row. The slots that are filed as
/// vectors are written with a column count of 0. A matrix that has rows but no columns is written
/// with an empty line for each row, which tells it from a vector.
void WriteMatrixSection(RecordWriter& writer, Slot slot, const Matrix& values);

/// Reads what WriteMatrixSection writes. The counts are checked against what the rest of the file
/// can hold and what the machine can, before anything is allocated. False after a refusal.
bool ReadMatrixSection(FieldScanner& scanner, Slot slot, MatrixSection& section);

/// The bytes of a matrix file: the section and nothing else.
std::string MatrixFile(Slot slot, const Matrix& values, Progress& progress = NoProgress());

/// Reads a matrix file for an operand. A vector gives a matrix of `rows` rows and no columns, and
/// the rest of its file stays unread; after any other matrix the file must end.
FileReading<Matrix> ReadMatrixFile(Slot operand, std::string_view bytes,
                                   const Memory& memory = SystemMemory(),
                                   Progress& progress = NoProgress());

// Parts that other readers share.

/// Reads a count. Refuses negative ones.
bool ReadCount(FieldScanner& scanner, const std::string& meaning, int& count);
/// Reads the elements of a matrix whose counts are known, after checking that they can be there.
bool ReadElements(FieldScanner& scanner, const std::string& name, int rows, int cols,
                  Matrix& values);
/// Refuses a file that goes on after its last field.
bool ReadEnd(FieldScanner& scanner);

}  // namespace qmx
