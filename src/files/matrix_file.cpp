// SPDX-License-Identifier: MIT
#include "files/matrix_file.h"

#include <algorithm>

#include "base/number_text.h"

namespace qmx {
namespace {

/// A matrix without elements leaves no bytes that its counts could be measured by. This many lines
/// are fine in any file.
constexpr std::size_t kLinesWithoutElements = 1000000;

std::string NameOf(Slot slot) {
  return slot <= kSlotB ? std::string(InfoOf(slot).title)
                        : '"' + std::string(InfoOf(slot).title) + '"';
}

bool CheckElementlessCount(FieldScanner& scanner, const std::string& name, int rows, int cols) {
  const auto lines = static_cast<std::size_t>(std::max(rows, cols));
  if (lines <= std::max(kLinesWithoutElements, scanner.Size())) return true;
  return scanner.RefuseLast("counts of rows and columns of " + name + " that its file can hold");
}

bool CheckElements(FieldScanner& scanner, const std::string& name, int rows, int cols) {
  if (rows == 0 || cols == 0) return CheckElementlessCount(scanner, name, rows, cols);
  const std::uint64_t count = static_cast<std::uint64_t>(rows) * static_cast<std::uint64_t>(cols);
  if (!scanner.CanHoldNumbers(count)) {
    return scanner.RefuseLast("a file long enough for the " + std::to_string(count) +
                              " elements of " + name);
  }
  if (!scanner.HasRoomFor(rows, cols))
    return scanner.RefuseLast("a size of " + name + " that fits into memory");
  return true;
}

bool ReadCounts(FieldScanner& scanner, const std::string& name, int& rows, int& cols) {
  return ReadCount(scanner, "the number of rows of " + name, rows) &&
         ReadCount(scanner, "the number of columns of " + name, cols);
}

/// Reads the empty lines that stand for the rows of a matrix without columns.
bool ReadEmptyRows(FieldScanner& scanner, const std::string& name, int rows) {
  for (int i = 1; i <= rows; ++i) {
    if (!scanner.ReadEmptyLine())
      return scanner.Refuse("an empty line for row " + CStr(i) + " of " + name);
  }
  return true;
}

}  // namespace

bool ReadCount(FieldScanner& scanner, const std::string& meaning, int& count) {
  std::int32_t value = 0;
  if (!scanner.ReadInteger(value)) return scanner.Refuse(meaning);
  if (value < 0) return scanner.RefuseLast(meaning + ", at least 0");
  count = value;
  return true;
}

bool ReadElements(FieldScanner& scanner, const std::string& name, int rows, int cols,
                  Matrix& values) {
  if (!CheckElements(scanner, name, rows, cols)) return false;
  values = Matrix(rows, cols);
  const std::size_t read = scanner.ReadNumbers(values.Data(), values.Size());
  if (read == values.Size()) return true;
  const std::size_t width = static_cast<std::size_t>(cols);
  return scanner.Refuse("element (" + std::to_string(read / width + 1) + "," +
                        std::to_string(read % width + 1) + ") of " + name);
}

bool ReadEnd(FieldScanner& scanner) {
  return scanner.AtEnd() || scanner.Refuse("the end of the file");
}

void WriteMatrixSection(RecordWriter& writer, Slot slot, const Matrix& values) {
  writer.Integer(values.Rows());
  writer.Integer(InfoOf(slot).filedAsVector ? 0 : values.Cols());
  writer.EndRecord();
  writer.PrintNumbers(values);
  if (values.Cols() > 0) return;
  for (int i = 1; i <= values.Rows(); ++i) writer.PrintText("");
}

bool ReadMatrixSection(FieldScanner& scanner, Slot slot, MatrixSection& section) {
  const std::string name = NameOf(slot);
  const bool vectorSlot = InfoOf(slot).filedAsVector;
  int& rows = section.rows;
  int& cols = section.cols;
  if (!ReadCounts(scanner, name, rows, cols)) return false;
  if (vectorSlot && cols > 1)
    return scanner.RefuseLast("a column count of 0, as " + name + " is a vector");
  if (cols > 0) return ReadElements(scanner, name, rows, cols, section.array);
  if (vectorSlot || (rows > 0 && !scanner.ReadEmptyLine()))
    return ReadElements(scanner, name, rows, 1, section.array);
  section.array = Matrix(rows, 0);
  return CheckElementlessCount(scanner, name, rows, 0) && ReadEmptyRows(scanner, name, rows - 1);
}

std::string MatrixFile(Slot slot, const Matrix& values, Progress& progress) {
  RecordWriter writer(values.Size(), progress);
  WriteMatrixSection(writer, slot, values);
  return writer.Take();
}

FileReading<Matrix> ReadMatrixFile(Slot operand, std::string_view bytes, const Memory& memory,
                                   Progress& progress) {
  FileReading<Matrix> reading;
  FieldScanner scanner(bytes, memory, progress);
  const std::string name = NameOf(operand);
  int rows = 0;
  int cols = 0;
  if (ReadCounts(scanner, name, rows, cols)) {
    ReadElements(scanner, name, rows, cols, reading.content) && (cols == 0 || ReadEnd(scanner));
  }
  reading.problem = scanner.ProblemText();
  return reading;
}

}  // namespace qmx
