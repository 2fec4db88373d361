// SPDX-License-Identifier: MIT
#include "files/lu_file.h"

#include "base/number_text.h"

namespace qmx {
namespace {

bool NamesEachRowInOrder(const Matrix& exchanges) {
  for (int i = 1; i <= exchanges.Rows(); ++i) {
    if (exchanges(i, 1) != i) return false;
  }
  return true;
}

Matrix RowsInOrder(int count) {
  Matrix exchanges(count, 1);
  for (int i = 1; i <= count; ++i) exchanges(i, 1) = i;
  return exchanges;
}

bool ReadCounts(FieldScanner& scanner, StoredFactors& factors) {
  factors.exchangeCols = 1;
  if (!ReadCount(scanner, "the number of rows of the factor L", factors.lRows)) return false;
  const int line = scanner.LineOfLast();
  if (!ReadCount(scanner, "the number of columns of the factor L", factors.lCols) ||
      !ReadCount(scanner, "the number of rows of the factor U", factors.uRows) ||
      !ReadCount(scanner, "the number of columns of the factor U", factors.uCols) ||
      !ReadCount(scanner, "the number of exchange records", factors.exchangeRows))
    return false;
  // Any file with five counts somewhere could pass for factors with a U that is not square.
  return factors.uRows == factors.uCols || scanner.LineOfLast() == line ||
         scanner.RefuseLast("the five counts of a file of factors in one line");
}

std::string ShapeText(int rows, int cols) { return CStr(rows) + " x " + CStr(cols); }

bool CheckCounts(FieldScanner& scanner, const StoredFactors& factors) {
  const int order = factors.uRows;
  if (factors.lRows != order || factors.lCols != order) {
    return scanner.RefuseLast("a factor L of the shape of U, " + ShapeText(order, order),
                              "L of " + ShapeText(factors.lRows, factors.lCols));
  }
  if (factors.exchangeRows != 0 && factors.exchangeRows != order)
    return scanner.RefuseLast("no exchange records or " + CStr(order));
  return true;
}

bool ReadExchanges(FieldScanner& scanner, StoredFactors& factors) {
  const int order = factors.uRows;
  factors.exchanges = RowsInOrder(order);
  for (int i = 1; i <= factors.exchangeRows; ++i) {
    const std::string expected =
        "exchange record " + CStr(i) + ", a row number from 1 to " + CStr(order);
    if (!scanner.ReadNumber(factors.exchanges(i, 1))) return scanner.Refuse(expected);
    const int row = RoundToInteger(factors.exchanges(i, 1));
    if (row < 1 || row > order) return scanner.RefuseLast(expected);
  }
  return true;
}

}  // namespace

void WriteLUFactors(RecordWriter& writer, const StoredFactors& factors) {
  const bool noExchanges = factors.exchangeRows == 0 && NamesEachRowInOrder(factors.exchanges);
  writer.Integer(factors.L.Rows());
  writer.Integer(factors.L.Cols());
  writer.Integer(factors.U.Rows());
  writer.Integer(factors.U.Cols());
  writer.Integer(noExchanges ? 0 : factors.exchanges.Rows());
  writer.EndRecord();
  writer.PrintNumbers(factors.L);
  writer.PrintNumbers(factors.U);
  if (!noExchanges) writer.PrintNumbers(factors.exchanges);
}

bool ReadLUFactors(FieldScanner& scanner, StoredFactors& factors) {
  if (!ReadCounts(scanner, factors)) return false;
  if (factors.uRows != factors.uCols) return true;
  const int order = factors.uRows;
  return CheckCounts(scanner, factors) &&
         ReadElements(scanner, "the factor L", order, order, factors.L) &&
         ReadElements(scanner, "the factor U", order, order, factors.U) &&
         ReadExchanges(scanner, factors);
}

std::string LUFile(const StoredFactors& factors, Progress& progress) {
  RecordWriter writer(factors.L.Size() + factors.U.Size() + factors.exchanges.Size(), progress);
  WriteLUFactors(writer, factors);
  return writer.Take();
}

FileReading<StoredFactors> ReadLUFile(std::string_view bytes, const Memory& memory,
                                      Progress& progress) {
  FileReading<StoredFactors> reading;
  FieldScanner scanner(bytes, memory, progress);
  StoredFactors& factors = reading.content;
  if (ReadLUFactors(scanner, factors) && factors.uRows == factors.uCols) {
    if (factors.uRows == 0) {
      scanner.RefuseLast("factors of order 1 or more");
    } else {
      ReadEnd(scanner);
    }
  }
  reading.problem = scanner.ProblemText();
  return reading;
}

}  // namespace qmx
