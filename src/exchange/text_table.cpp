// SPDX-License-Identifier: MIT
#include "exchange/text_table.h"

#include <algorithm>
#include <cassert>

#include "base/number_text.h"
#include "base/words.h"
#include "exchange/exact_text.h"
#include "exchange/refusal.h"
#include "exchange/size_limits.h"
#include "exchange/table_scanner.h"
#include "exchange/word_reader.h"

namespace qmx {
namespace {

constexpr std::string_view kSeparators = ",;\t ";

void CheckSettings(const TableSettings& settings) {
  assert(kSeparators.find(settings.separator) != std::string_view::npos);
  assert(settings.headingRows >= 0 && settings.headingColumns >= 0);
  if (settings.separator == ',' && settings.decimalSign == ',')
    throw Refusal("A comma cannot be the separator and the decimal sign.");
}

/// True for a text that would be a number if it had another exponent.
bool IsTooLarge(std::string cell, char decimalSign) {
  std::replace(cell.begin(), cell.end(), 'E', 'e');
  std::string mantissa = cell.substr(0, cell.find('e'));
  double value = 0;
  return cell.size() > mantissa.size() + 1 &&
         ReadCellNumber(mantissa + "e-999999999", decimalSign, value) &&
         ReadCellNumber("0" + cell.substr(mantissa.size()), decimalSign, value);
}

/// The rows of a table whose first one has been looked at.
class TableReader {
 public:
  TableReader(std::string_view bytes, const TableSettings& settings, const Memory& memory)
      : bytes_(bytes), settings_(settings), memory_(memory), scanner_(bytes, settings) {}

  Matrix Read();
  /// A refusal or a note where the last line has no end.
  std::string CheckEnd() const;

 private:
  void StepToFirstRow();
  void MeasureFirstRow();
  void ReadRow(double* out);
  void ReadUnusualCell(double& value);
  [[noreturn]] void RefuseCell(std::string_view cell) const;
  [[noreturn]] void RefuseLength() const;

  std::string_view bytes_;
  const TableSettings& settings_;
  const Memory& memory_;
  TableScanner scanner_;
  int firstLine_ = 0;
  int cells_ = 0;             ///< Of every line, the empty one behind a last separator included.
  bool lastIsEmpty_ = false;  ///< Every line ends with a separator.
};

void TableReader::StepToFirstRow() {
  for (int i = 0; i <= settings_.headingRows; ++i) {
    if (scanner_.NextRow()) continue;
    throw Refusal(i == 0 ? "There is nothing in the text but comments and blank lines."
                         : "There are no numbers below the headings.");
  }
  firstLine_ = scanner_.Line();
}

void TableReader::MeasureFirstRow() {
  TableScanner scanner = scanner_;
  TableCell cell;
  while (scanner.NextCell(cell)) ++cells_;
  lastIsEmpty_ = cells_ > 1 && cell.text.empty() && !cell.quoted;
  if (cells_ - (lastIsEmpty_ ? 1 : 0) <= settings_.headingColumns)
    RefuseAt(firstLine_, 0, "there are no numbers beside the headings.");
}

Matrix TableReader::Read() {
  StepToFirstRow();
  MeasureFirstRow();
  std::size_t rows = 1;
  for (TableScanner scanner = scanner_; scanner.NextRow();) ++rows;
  const std::size_t cols = cells_ - (lastIsEmpty_ ? 1 : 0) - settings_.headingColumns;
  // A cell has a character and another one behind it. Where the bytes are too few for that, some
  // row is too short, and the rows need not be kept to find it.
  const std::size_t most = (scanner_.BytesFromRow() + 1) / 2;
  const bool kept = rows <= most / cols;
  Matrix values = NewMatrix(kept ? rows : 1, cols, most, Storage::kFull, memory_);
  for (std::size_t i = 0; i < rows; ++i) {
    if (i > 0) scanner_.NextRow();
    ReadRow(values.Data() + (kept ? i * cols : 0));
  }
  assert(kept);
  return values;
}

void TableReader::ReadRow(double* out) {
  TableCell cell;
  for (int j = 0; j < settings_.headingColumns; ++j) {
    if (!scanner_.NextCell(cell)) RefuseLength();
  }
  const int numbers = cells_ - (lastIsEmpty_ ? 1 : 0) - settings_.headingColumns;
  for (int j = 0; j < numbers; ++j) {
    if (!scanner_.NextNumber(out[j])) ReadUnusualCell(out[j]);
  }
  if (lastIsEmpty_) {
    if (!scanner_.NextCell(cell)) RefuseLength();
    if (!cell.text.empty())
      RefuseAt(firstLine_, cells_, "expected a number, but found an empty cell.");
  }
  if (!scanner_.AtEndOfRow()) RefuseLength();
}

void TableReader::ReadUnusualCell(double& value) {
  TableCell cell;
  if (!scanner_.NextCell(cell)) RefuseLength();
  if (!ReadCellNumber(cell.text, settings_.decimalSign, value)) RefuseCell(cell.text);
}

void TableReader::RefuseCell(std::string_view cell) const {
  std::string text = "expected a number, but found ";
  if (cell.empty()) {
    text += "an empty cell.";
  } else if (IsNonFiniteWord(cell)) {
    text = "expected a finite number, but found " + Quoted(cell) + ".";
  } else if (IsTooLarge(std::string(cell), settings_.decimalSign)) {
    text += Quoted(cell) + ", which is too large.";
  } else {
    text += Quoted(cell) + ".";
  }
  RefuseAt(scanner_.Line(), scanner_.Column(), text);
}

void TableReader::RefuseLength() const {
  TableScanner rest = scanner_;
  TableCell cell;
  while (rest.NextCell(cell)) continue;
  const int found = rest.Column();
  RefuseAt(scanner_.Line(), std::min(found, cells_) + 1,
           "expected " + CountOf(cells_, "cell") + " as in line " + std::to_string(firstLine_) +
               ", but found " + std::to_string(found) + ".");
}

std::string TableReader::CheckEnd() const {
  if (bytes_.back() == scanner_.LineEnd()) return {};
  if (bytes_.find("\r\n") != std::string_view::npos) {
    const auto lines = std::count(bytes_.begin(), bytes_.end(), '\n') + 1;
    RefuseAt(static_cast<int>(lines), 0,
             "the line does not end as the others do; the file seems to be cut off.");
  }
  return "The last line has no line end. If the file was cut off, its last number may be wrong.";
}

PreviewCell::Kind KindOf(const TableCell& cell, const TableSettings& settings, bool heading) {
  if (heading) return PreviewCell::Kind::kHeading;
  double value = 0;
  return ReadCellNumber(cell.text, settings.decimalSign, value) ? PreviewCell::Kind::kNumber
                                                                : PreviewCell::Kind::kNoNumber;
}

/// What Shown shows, without its quotes.
std::string PreviewText(std::string_view text) {
  const std::string shown = Quoted(text);
  return shown.substr(1, shown.size() - 2);
}

}  // namespace

ForeignOutcome<Matrix> ReadTextTable(std::string_view bytes, const TableSettings& settings,
                                     const Memory& memory) {
  return OutcomeOf<Matrix>([&](ForeignOutcome<Matrix>& outcome) {
    CheckSettings(settings);
    TableReader reader(bytes, settings, memory);
    outcome.content = reader.Read();
    outcome.note = reader.CheckEnd();
  });
}

TablePreview PreviewTextTable(std::string_view bytes, const TableSettings& settings, int mostRows,
                              int mostColumns) {
  TablePreview preview;
  TableScanner scanner(bytes, settings);
  for (int i = 0; scanner.NextRow(); ++i) {
    if (i == mostRows) {
      preview.moreRows = true;
      break;
    }
    std::vector<PreviewCell>& row = preview.rows.emplace_back();
    TableCell cell;
    for (int j = 0; scanner.NextCell(cell); ++j) {
      if (j == mostColumns) {
        preview.moreColumns = true;
        break;
      }
      const bool heading = i < settings.headingRows || j < settings.headingColumns;
      row.push_back({PreviewText(cell.text), KindOf(cell, settings, heading)});
    }
  }
  return preview;
}

ForeignOutcome<std::string> WriteTextTable(const Matrix& values, char separator, char decimalSign) {
  return OutcomeOf<std::string>([&](ForeignOutcome<std::string>& outcome) {
    CheckSettings({.separator = separator, .decimalSign = decimalSign});
    CheckWritable(values);
    std::string& text = outcome.content;
    constexpr std::size_t kUsualLength = 20;
    text.reserve(values.Size() * kUsualLength);
    for (int i = 1; i <= values.Rows(); ++i) {
      for (int j = 1; j <= values.Cols(); ++j) {
        if (j > 1) text += separator;
        AppendExact(text, values(i, j), decimalSign);
      }
      text += "\r\n";
    }
  });
}

}  // namespace qmx
