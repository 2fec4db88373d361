// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/matrix.h"
#include "base/memory.h"
#include "exchange/foreign_outcome.h"
#include "exchange/foreign_variable.h"
#include "exchange/text_table.h"

namespace qmx {

// The front door to the files of other programs: what they are, what is inside, reading and
// writing. Bytes come from whoever reads files and go to whoever writes them; nothing here touches
// a disk, and no text names a file.
//
// To import: InspectForeign; if that is well, let the user choose one of the variables (where there
// are several) or change the settings of a text table (PreviewTextTable shows what they give), then
// ReadForeign. To export: WriteForeign.
//
// Beside the bytes at hand reading takes the memory of the matrix, and for a MAT file, where matio
// reads it, that of the file once more and some megabytes: where a number takes four bytes of the
// file or more, three times the file in all. A size that a file only claims is refused before
// memory is asked for. Nothing here keeps anything between two calls; matio may not read for two
// threads at once.

enum class ForeignFormat { kTextTable, kMatrixMarket, kNpy, kOctaveText, kMat };
inline constexpr std::size_t kForeignFormatCount = 5;

/// One row for each format, in the order in which menus and file dialogs offer them.
struct ForeignFormatInfo {
  ForeignFormat format;
  std::string_view title;     ///< "Text table (CSV)": for a file dialog's list of types.
  std::string_view ending;    ///< What a written file's name ends with: ".csv".
  std::string_view patterns;  ///< For a file dialog, separated by blanks: "*.csv *.tsv *.txt".
  bool named;                 ///< What is written has a variable's name.
};
extern const std::array<ForeignFormatInfo, kForeignFormatCount> kForeignFormats;
const ForeignFormatInfo& InfoOf(ForeignFormat format);

/// What a file is and holds.
struct ForeignContents {
  ForeignFormat format = ForeignFormat::kTextTable;
  /// At least one; exactly one in formats that hold a single matrix. In a text table its shape is
  /// not known before reading.
  std::vector<ForeignVariable> variables;
  /// The first variable that can be read, which is what to propose; 0 where none can.
  std::size_t proposed = 0;
  TableProposal table;  ///< For a text table.
};

/// Recognises a format from the bytes alone; what is nothing else and has no bytes that no text
/// has is a text table. Refuses, with what to do about it, the usual files that hold tables but
/// cannot be read here (spreadsheets, archives, compressed files, texts of 16-bit characters, other
/// HDF5 files), unknown binary files, empty files, and what the format's own list refuses.
ForeignOutcome<ForeignContents> InspectForeign(std::string_view bytes);

/// Reads one variable of what InspectForeign found in the same bytes, a text table with the
/// settings in `contents.table`. What each format refuses stands in its own header;
/// `memory` is where the matrix must find room.
ForeignOutcome<Matrix> ReadForeign(std::string_view bytes, const ForeignContents& contents,
                                   std::size_t variable, const Memory& memory = SystemMemory());

/// How a matrix is written.
struct ForeignChoice {
  ForeignFormat format = ForeignFormat::kTextTable;
  char separator = ',';    ///< For a text table: ',', ';', '\t' or ' '.
  char decimalSign = '.';  ///< For a text table: '.' or ','.
  std::string name = "A";  ///< In formats that are named; see VariableName.
};

/// A matrix as a file of another program, so that exactly the same doubles are read back. Refuses a
/// matrix without elements, one with an element that is no finite number, and a decimal comma where
/// a comma separates.
ForeignOutcome<std::string> WriteForeign(const Matrix& values, const ForeignChoice& choice);

/// Turns a title into a name that a variable may have: letters, digits and underscores, a letter
/// first, 63 characters at most.
///   "A" -> "A"   "Adjoint of A" -> "Adjoint_of_A"   "A + B" -> "A_B"   "2x" -> "x2x"   "" -> "x"
std::string VariableName(std::string_view title);

}  // namespace qmx
