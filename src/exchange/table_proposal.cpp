// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <utility>

#include "exchange/table_scanner.h"
#include "exchange/text_table.h"
#include "exchange/word_reader.h"

namespace qmx {
namespace {

// Every way of separating is tried on the first lines. The best is the one that makes most of the
// cells numbers and most of the rows equally long; headings are what then stands apart.

constexpr std::size_t kUsualSample = 1 << 16;
constexpr std::size_t kLeastLines = 4;
constexpr std::size_t kLargestSample = 1 << 22;
constexpr int kMostHeadingRows = 10;

struct Way {
  char separator;
  char decimalSign;
};
/// Of ways that fit equally well and make as many columns, the first is taken.
constexpr std::array<Way, 7> kWays = {
    {{',', '.'}, {';', '.'}, {'\t', '.'}, {' ', '.'}, {';', ','}, {'\t', ','}, {' ', ','}}};

/// The lines at the start of a text, all of them whole where that does not make them too long.
std::string_view SampleOf(std::string_view bytes) {
  if (bytes.size() <= kUsualSample) return bytes;
  std::size_t end = 0;
  for (std::size_t lines = 0; end < kUsualSample || lines < kLeastLines; ++lines) {
    const std::size_t lineEnd = bytes.find('\n', end);
    if (lineEnd >= kLargestSample) break;  // As it is where there is none.
    end = lineEnd + 1;
  }
  return bytes.substr(0, end == 0 ? kLargestSample : end);
}

/// The comment sign that the first line with one begins with.
char CommentSignOf(std::string_view sample) {
  for (std::size_t at = 0; at < sample.size();) {
    const std::size_t first = sample.find_first_not_of(" \t\r\n", at);
    if (first == std::string_view::npos) break;
    if (sample[first] == '#' || sample[first] == '%') return sample[first];
    at = std::min(sample.find_first_of("\r\n", first), sample.size());
  }
  return 0;
}

/// A value that is not finite stands where a number should, and is no heading.
enum class CellKind { kNumber, kNonFinite, kEmpty, kText };

struct SampleRow {
  std::vector<CellKind> cells;
  bool firstAloneIsQuoted = false;
  bool countsUp = false;  ///< An empty cell, then 0, 1, 2, ... or 1, 2, 3, ...
};

struct Sample {
  std::vector<SampleRow> rows;
  std::size_t columns = 0;  ///< Of most rows, without an empty one behind the last separator.
  double quality = 0;  ///< 0 to 1: the part of rows so long times the part of numbers in these.
};

CellKind KindOf(std::string_view cell, char decimalSign, double& value) {
  if (ReadCellNumber(cell, decimalSign, value)) return CellKind::kNumber;
  if (cell.empty()) return CellKind::kEmpty;
  return IsNonFiniteWord(cell) ? CellKind::kNonFinite : CellKind::kText;
}

SampleRow ReadSampleRow(TableScanner& scanner, char decimalSign) {
  SampleRow row;
  TableCell cell;
  for (double last = 0; scanner.NextCell(cell);) {
    double value = 0;
    const CellKind kind = KindOf(cell.text, decimalSign, value);
    if (row.cells.empty()) {
      row.firstAloneIsQuoted = cell.quoted;
      row.countsUp = kind == CellKind::kEmpty;
    } else if (row.cells.size() == 1) {
      row.firstAloneIsQuoted = row.firstAloneIsQuoted && !cell.quoted;
      row.countsUp = row.countsUp && kind == CellKind::kNumber && (value == 0 || value == 1);
    } else {
      row.countsUp = row.countsUp && kind == CellKind::kNumber && value == last + 1;
    }
    last = value;
    row.cells.push_back(kind);
  }
  return row;
}

/// The usual number of cells in a row; of several the largest.
std::size_t UsualLength(const std::vector<SampleRow>& rows) {
  std::map<std::size_t, int> counts;
  for (const SampleRow& row : rows) ++counts[row.cells.size()];
  std::pair<std::size_t, int> most{0, 0};
  for (const auto& [length, count] : counts) {
    if (count >= most.second) most = {length, count};
  }
  return most.first;
}

void Judge(Sample& sample) {
  const std::size_t length = UsualLength(sample.rows);
  std::size_t usual = 0;
  std::size_t numbers = 0;
  std::size_t lastEmpty = 0;
  for (const SampleRow& row : sample.rows) {
    if (row.cells.size() != length) continue;
    ++usual;
    numbers += std::count(row.cells.begin(), row.cells.end(), CellKind::kNumber);
    lastEmpty += row.cells.back() == CellKind::kEmpty ? 1 : 0;
  }
  if (usual == 0) return;
  sample.columns = length > 1 && lastEmpty == usual ? length - 1 : length;
  sample.quality = static_cast<double>(usual) / static_cast<double>(sample.rows.size()) *
                   static_cast<double>(numbers) / static_cast<double>(usual * sample.columns);
}

Sample Take(std::string_view text, const TableSettings& settings) {
  Sample sample;
  TableScanner scanner(text, settings);
  while (scanner.NextRow()) sample.rows.push_back(ReadSampleRow(scanner, settings.decimalSign));
  Judge(sample);
  return sample;
}

/// True where most rows below the first have headings in a column.
bool IsHeadingColumn(const Sample& sample, std::size_t column) {
  std::size_t rows = 0;
  std::size_t headings = 0;
  for (std::size_t i = sample.rows.size() > 1 ? 1 : 0; i < sample.rows.size(); ++i) {
    const SampleRow& row = sample.rows[i];
    if (row.cells.size() <= column) continue;
    ++rows;
    const bool isLabel = column == 0 && row.firstAloneIsQuoted && sample.columns > 1;
    headings += row.cells[column] == CellKind::kText || isLabel ? 1 : 0;
  }
  return 2 * headings > rows;
}

/// A row without anything that could be a value.
bool IsHeadingRow(const SampleRow& row, std::size_t headingColumns) {
  const std::size_t from = row.cells.size() > headingColumns ? headingColumns : 0;
  return std::all_of(
      row.cells.begin() + static_cast<std::ptrdiff_t>(from), row.cells.end(),
      [](CellKind kind) { return kind == CellKind::kEmpty || kind == CellKind::kText; });
}

/// Proposes headings. True where those of the columns are as many as these: that they are separated
/// in the same way is proof of it.
bool FindHeadings(const Sample& sample, TableSettings& settings) {
  std::size_t columns = 0;
  while (columns + 1 < sample.columns && IsHeadingColumn(sample, columns)) ++columns;
  std::size_t rows = 0;
  while (rows < sample.rows.size() && rows <= kMostHeadingRows &&
         IsHeadingRow(sample.rows[rows], columns))
    ++rows;
  // Without a row of numbers there is nothing that headings could stand above.
  if (rows == sample.rows.size() || rows > kMostHeadingRows) return false;
  if (columns == 0 && sample.columns > 1) {
    // The column of row numbers has no name: it has one cell less than the rows, or an empty one.
    if (rows > 0 && sample.rows[rows - 1].cells.size() + 1 == sample.columns) columns = 1;
    const std::size_t names = rows > 0 ? rows - 1 : 0;
    const bool cornerIsEmpty = sample.rows[names].cells.front() == CellKind::kEmpty &&
                               sample.rows[names].cells.size() == sample.columns;
    if (cornerIsEmpty && (rows > 0 || sample.rows[names].countsUp)) {
      columns = 1;
      rows = names + 1;
    }
  }
  settings.headingRows = static_cast<int>(rows);
  settings.headingColumns = static_cast<int>(columns);
  return rows > 0 && sample.columns > 1 && sample.rows[rows - 1].cells.size() == sample.columns;
}

}  // namespace

TableProposal ProposeTableSettings(std::string_view bytes) {
  constexpr double kAlike = 1e-9;
  const std::string_view text = SampleOf(bytes);
  const char commentSign = CommentSignOf(text);
  TableProposal best;
  Sample bestSample;
  for (const Way& way : kWays) {
    const TableSettings settings{
        .separator = way.separator, .decimalSign = way.decimalSign, .commentSign = commentSign};
    Sample sample = Take(text, settings);
    const bool alike = std::abs(sample.quality - bestSample.quality) <= kAlike;
    if (alike && sample.quality > 0 && sample.columns != bestSample.columns) best.certain = false;
    if (alike ? sample.columns <= bestSample.columns : sample.quality < bestSample.quality)
      continue;
    if (!alike) best.certain = true;
    best.settings = settings;
    bestSample = std::move(sample);
  }
  if (FindHeadings(bestSample, best.settings)) best.certain = true;
  const bool commaSeparates = best.settings.separator == ',';
  const std::string_view rest = bytes.substr(text.size());
  // Whole numbers alone tell nothing; what follows may.
  if (!commaSeparates && text.find_first_of(".,") == std::string_view::npos &&
      rest.find(',') != std::string_view::npos && rest.find('.') == std::string_view::npos)
    best.settings.decimalSign = ',';
  return best;
}

}  // namespace qmx
