// SPDX-License-Identifier: MIT
#include "output/printed_table.h"

#include <algorithm>

#include "base/number_text.h"

namespace qmx {
namespace {

/// Sizes of print from the largest on. Small ones are condensed, so that they are as high as they
/// can be.
constexpr double kPitch = 0.6;  // The width of a character in a font of size 1.
constexpr double kCondensed = 0.75;
constexpr double kLeading = 1.2;
constexpr PrintSize SizeOf(double font, double condensed) {
  return {font, font * kPitch * condensed, font * kLeading};
}
constexpr PrintSize kSizes[] = {SizeOf(10, 1),         SizeOf(9, 1),
                                SizeOf(8, 1),          SizeOf(8, kCondensed),
                                SizeOf(7, kCondensed), SizeOf(6.5, kCondensed),
                                SizeOf(6, kCondensed), SizeOf(5.5, kCondensed)};

constexpr int kHeadLines = 3;  // Title, an empty line, the numbers of the columns.
constexpr int kFootLines = 2;  // An empty line and the number of the page.
constexpr int kGap = 2;        // Blanks between columns; the smallest print has less.
constexpr int kSmallGap = 1;
constexpr int kNumbersPerLook = 4096;

int DigitsOf(int number) { return static_cast<int>(std::to_string(number).size()); }

/// The places before the point of a number's text.
int PlacesBefore(const std::string& text) {
  return static_cast<int>(std::min(text.find_first_of(".E"), text.size()));
}

int GapOf(const PrintSize& size) { return size.font < 8 ? kSmallGap : kGap; }

void AppendBlanks(std::string& line, int count) {
  line.append(static_cast<std::size_t>(std::max(count, 0)), ' ');
}

}  // namespace

void PrintedTable::Measure(FunctionRef<void()> look) {
  widths_.clear();
  widths_.reserve(static_cast<std::size_t>(values_.Cols()));
  for (int j = 1; j <= values_.Cols(); ++j) widths_.push_back({DigitsOf(j), 0});
  int untilLook = kNumbersPerLook;
  const Matrix& values = values_;
  for (int i = 1; i <= values.Rows(); ++i) {
    const double* row = values.Row(i);
    for (Width& width : widths_) {
      if (--untilLook == 0) {
        look();
        untilLook = kNumbersPerLook;
      }
      const std::string text = TableNumber(*row++, digits_);
      const int before = PlacesBefore(text);
      width.before = std::max(width.before, before);
      width.after = std::max(width.after, static_cast<int>(text.size()) - before);
    }
  }
}

int PrintedTable::RowNumberWidth() const { return DigitsOf(values_.Rows()); }

/// Divides the table in a size; false where it needs more pages than are enough.
bool PrintedTable::Divide(const Paper& paper, const PrintSize& size) {
  const int across = static_cast<int>(paper.width / size.character);
  const int down = static_cast<int>(paper.height / size.line);
  const int most = std::max(down - kHeadLines - kFootLines, 1);
  rowBlocks_ = (values_.Rows() + most - 1) / most;
  // Pages are filled alike.
  rowsPerPage_ = (values_.Rows() + rowBlocks_ - 1) / std::max(rowBlocks_, 1);
  blocks_.clear();
  int used = 0;
  for (int j = 1; j <= values_.Cols(); ++j) {
    const int width = widths_[static_cast<std::size_t>(j) - 1].All() + GapOf(size);
    if (blocks_.empty() || used + width > across) {
      blocks_.push_back({j, j});
      used = RowNumberWidth();
    }
    blocks_.back().lastCol = j;
    used += width;
  }
  size_ = size;
  return Pages() <= kEnoughPages;
}

void PrintedTable::LayOut(const Paper& paper) {
  if (values_.Size() == 0) return;
  for (const PrintSize& size : kSizes) {
    if (Divide(paper, size)) return;
  }
}

PrintedTable::Extent PrintedTable::ExtentOf(int page) const {
  const Block& block = blocks_[static_cast<std::size_t>((page - 1) / rowBlocks_)];
  const int first = (page - 1) % rowBlocks_ * rowsPerPage_ + 1;
  return {first, std::min(first + rowsPerPage_ - 1, values_.Rows()), block.firstCol, block.lastCol};
}

std::vector<std::string> PrintedTable::Page(int page) const {
  const Extent extent = ExtentOf(page);
  const int gap = GapOf(size_);
  std::vector<std::string> lines;
  lines.push_back(title_ + ", " + CStr(values_.Rows()) + " x " + CStr(values_.Cols()));
  if (Pages() > 1) {
    lines.back() += ": rows " + CStr(extent.firstRow) + " to " + CStr(extent.lastRow) +
                    ", columns " + CStr(extent.firstCol) + " to " + CStr(extent.lastCol);
  }
  lines.emplace_back();
  std::string line;
  AppendBlanks(line, RowNumberWidth());
  for (int j = extent.firstCol; j <= extent.lastCol; ++j) {
    const Width& width = widths_[static_cast<std::size_t>(j) - 1];
    // The number of a column ends above the digits before the points.
    AppendBlanks(line, gap + width.before - DigitsOf(j));
    line += CStr(j);
    AppendBlanks(line, width.after);
  }
  lines.push_back(line);
  for (int i = extent.firstRow; i <= extent.lastRow; ++i) {
    line.clear();
    AppendBlanks(line, RowNumberWidth() - DigitsOf(i));
    line += CStr(i);
    for (int j = extent.firstCol; j <= extent.lastCol; ++j) {
      const Width& width = widths_[static_cast<std::size_t>(j) - 1];
      const std::string text = TableNumber(values_(i, j), digits_);
      const int before = PlacesBefore(text);
      AppendBlanks(line, gap + width.before - before);
      line += text;
      AppendBlanks(line, width.after - static_cast<int>(text.size()) + before);
    }
    lines.push_back(line);
  }
  for (std::string& each : lines) each.erase(each.find_last_not_of(' ') + 1);
  return lines;
}

std::string PrintedTable::Foot(int page) const {
  return "page " + CStr(page) + " of " + CStr(Pages());
}

}  // namespace qmx
